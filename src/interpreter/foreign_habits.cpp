#include "interpreter/foreign_habits.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>

#include "base/folded_text.h"
#include "base/text.h"
#include "interpreter/expression_parser.h"
#include "interpreter/line_reader.h"
#include "interpreter/run_context.h"

namespace vaxel {
namespace {

// Words of three languages, in upper case and without accents.
constexpr auto Commands = std::to_array<Habit>({{"ABRIR", "Open"},
                                                {"AGUJA", "Aiguille"},
                                                {"AGUJERO", "Percer"},
                                                {"ALLER", "Goto"},
                                                {"ARCHIVO", "Fichier"},
                                                {"ARCO", "Arc"},
                                                {"ARCTEXT", "TexteC"},
                                                {"ARROW", "Fleche"},
                                                {"ASK", "Input"},
                                                {"BITMAP", "Image"},
                                                {"BOX", "Cadre"},
                                                {"CALL", "Fichier"},
                                                {"CARRE", "Cadre"},
                                                {"CENTER", "CentreE"},
                                                {"CENTRO", "CentreE"},
                                                {"CHIFFRE", "Val"},
                                                {"CIRC", "Cercle"},
                                                {"CIRCLE", "Cercle"},
                                                {"CIRCULO", "Cercle"},
                                                {"CIRCUNFERENCIA", "Cercle"},
                                                {"COLOR", "Couleur"},
                                                {"COLOUR", "Couleur"},
                                                {"CRESCENT", "DemiLune"},
                                                {"CROISSANT", "DemiLune"},
                                                {"CROIX", "Plus"},
                                                {"CROSS", "Plus"},
                                                {"CRUZ", "Plus"},
                                                {"CUADRADO", "Cadre"},
                                                {"DECALAGE", "Decal"},
                                                {"DELIMITER", "Separateur"},
                                                {"DEMANDER", "Input"},
                                                {"DISC", "CercleP"},
                                                {"DISCO", "CercleP"},
                                                {"DISK", "CercleP"},
                                                {"DISQUE", "CercleP"},
                                                {"DOT", "CercleP"},
                                                {"DOVETAIL", "QA"},
                                                {"DRILL", "Percer"},
                                                {"ECRIRE", "Texte"},
                                                {"ELIPSE", "Cercle"},
                                                {"ELLIPSE", "Cercle"},
                                                {"ENCRE", "Couleur"},
                                                {"EPAISSEUR", "EpaisT"},
                                                {"ESCALA", "Echelle"},
                                                {"ESCRIBIR", "Texte"},
                                                {"EXIT", "Stop"},
                                                {"EXPONENT", "Exposant"},
                                                {"EXPONENTE", "Exposant"},
                                                {"FILE", "Fichier"},
                                                {"FLECHA", "Fleche"},
                                                {"FONT", "Police"},
                                                {"FONTSIZE", "TailleP"},
                                                {"FOR", "Pour"},
                                                {"FOTO", "Image"},
                                                {"FRAME", "Cadre"},
                                                {"FUENTE", "Police"},
                                                {"GOSUB", "Fichier"},
                                                {"GRADUACION", "Grad"},
                                                {"GRADUATION", "Grad"},
                                                {"GROSOR", "EpaisT"},
                                                {"HAND", "Aiguille"},
                                                {"HOLE", "Percer"},
                                                {"IMAGEN", "Image"},
                                                {"IMPORT", "Fichier"},
                                                {"INCLUDE", "Fichier"},
                                                {"INCLUIR", "Fichier"},
                                                {"INCLURE", "Fichier"},
                                                {"INK", "Couleur"},
                                                {"INVERT", "Inversion"},
                                                {"INVERTIR", "Inversion"},
                                                {"JUMP", "Goto"},
                                                {"LABEL", "Texte"},
                                                {"LAMP", "Voyant"},
                                                {"LANDSCAPE", "FormatI"},
                                                {"LED", "Voyant"},
                                                {"LEER", "LVar"},
                                                {"LIGHT", "Voyant"},
                                                {"LIGNE", "Trait"},
                                                {"LINE", "Trait"},
                                                {"LINEA", "Trait"},
                                                {"LINEWIDTH", "EpaisT"},
                                                {"LIRE", "LVar"},
                                                {"LOGARITHM", "Exposant"},
                                                {"LOGARITHME", "Exposant"},
                                                {"LOGARITMO", "Exposant"},
                                                {"LOGO", "Image"},
                                                {"LUNA", "DemiLune"},
                                                {"LUNE", "DemiLune"},
                                                {"LUZ", "Voyant"},
                                                {"MARCA", "Grad"},
                                                {"MARCO", "Cadre"},
                                                {"MARK", "Grad"},
                                                {"MOON", "DemiLune"},
                                                {"NEEDLE", "Aiguille"},
                                                {"NEWPAGE", "NPage"},
                                                {"NEXT", "Suivant"},
                                                {"NUMBER", "Val"},
                                                {"NUMERO", "Val"},
                                                {"OFFSET", "Decal"},
                                                {"ORIENTATION", "FormatI"},
                                                {"ORIGEN", "CT"},
                                                {"ORIGIN", "CT"},
                                                {"ORIGINE", "CT"},
                                                {"OUVRIR", "Open"},
                                                {"OVAL", "Cercle"},
                                                {"OVALE", "Cercle"},
                                                {"PAGE", "NPage"},
                                                {"PAGINA", "NPage"},
                                                {"PALETA", "PalCoul"},
                                                {"PALETTE", "PalCoul"},
                                                {"PARA", "Pour"},
                                                {"PAYSAGE", "FormatI"},
                                                {"PEN", "EpaisT"},
                                                {"PHOTO", "Image"},
                                                {"PICTURE", "Image"},
                                                {"PILOTO", "Voyant"},
                                                {"POLIGONO", "Poly"},
                                                {"POLYGON", "Poly"},
                                                {"POLYGONE", "Poly"},
                                                {"POLYLINE", "Trait"},
                                                {"PORTRAIT", "FormatI"},
                                                {"PREGUNTAR", "Input"},
                                                {"PRINT", "Texte"},
                                                {"QUESTION", "Input"},
                                                {"QUIT", "Stop"},
                                                {"READ", "LVar"},
                                                {"RECT", "Cadre"},
                                                {"RECTA", "Droite"},
                                                {"RECTANGLE", "Cadre"},
                                                {"RECTANGULO", "Cadre"},
                                                {"RECUADRO", "Cadre"},
                                                {"REPEAT", "Pour"},
                                                {"REPETIR", "Pour"},
                                                {"RETURN", "Stop"},
                                                {"ROND", "Cercle"},
                                                {"SALTAR", "Goto"},
                                                {"SAUT", "Goto"},
                                                {"SCALE", "Echelle"},
                                                {"SECTEUR", "Sect"},
                                                {"SECTOR", "Sect"},
                                                {"SEGMENT", "Trait"},
                                                {"SEGMENTO", "Trait"},
                                                {"SEPARADOR", "Separateur"},
                                                {"SIGUIENTE", "Suivant"},
                                                {"SQUARE", "Cadre"},
                                                {"STRAIGHT", "Droite"},
                                                {"STROKE", "Trait"},
                                                {"TAILLE", "TailleP"},
                                                {"TALADRO", "Percer"},
                                                {"TAMANO", "TailleP"},
                                                {"TEXT", "Texte"},
                                                {"TEXTO", "Texte"},
                                                {"THICKNESS", "EpaisT"},
                                                {"TICK", "Grad"},
                                                {"TINTA", "Couleur"},
                                                {"TITLE", "Texte"},
                                                {"TITRE", "Texte"},
                                                {"TRANSLATE", "CT"},
                                                {"TRIANGLE", "Poly"},
                                                {"TRIANGULO", "Poly"},
                                                {"TROU", "Percer"},
                                                {"TYPEFACE", "Police"},
                                                {"VALEUR", "Val"},
                                                {"VALOR", "Val"},
                                                {"VALUE", "Val"},
                                                {"VARIABLES", "ListeVar"},
                                                {"VERTICAL", "DroiteV"},
                                                {"WRITE", "Texte"},
                                                {"ZONA", "Sect"},
                                                {"ZONE", "Sect"},
                                                {"ZOOM", "ZoomIni"}});

constexpr auto Loops = std::to_array<std::string_view>(
    {"FOR", "FOREACH", "WHILE", "NEXT", "WEND", "DO", "LOOP", "REPEAT", "UNTIL", "TANTQUE", "PARA"});
constexpr auto Branches = std::to_array<std::string_view>(
    {"ELSE", "ELSEIF", "ENDIF", "SINON", "FINSI", "ELIF", "SWITCH", "CASE", "THEN"});
constexpr auto CommentMarks =
    std::to_array<std::string_view>({"//", "#", ";", "/*", "--", "!", "*", "REM", "\""});

constexpr auto ForeignFunctions = std::to_array<Habit>(
    {{"SQRT", "SQR"},         {"RACINE", "SQR"},    {"RAC", "SQR"},     {"TRUNC", "FIX"},
     {"FLOOR", "INT"},        {"CEIL", "-INT(-x)"}, {"ENT", "INT"},     {"ROUND", "RND"},
     {"ARRONDI", "RND"},      {"SIGN", "SGN"},      {"SIGNE", "SGN"},   {"ATN", "ATAN"},
     {"ARCTAN", "ATAN"},      {"ARCSIN", "ASIN"},   {"ARCCOS", "ACOS"}, {"ASN", "ASIN"},
     {"ACS", "ACOS"},         {"TG", "TAN"},        {"SEN", "SIN"},     {"LOGTEN", "LOG"},
     {"LG", "LOG"},           {"POW", "^"},         {"POWER", "^"},     {"PUISSANCE", "^"},
     {"TANH", "SINH(x)/COSH"}});

constexpr auto Known = std::to_array<std::string_view>(
    {"SIN", "COS", "TAN", "ASIN", "ACOS", "ATAN", "SINH", "COSH", "LOG", "SQR", "ABS",
     "SGN", "FIX", "RND", "RND2", "NBP",  "MOD",  "EXP",  "LN",   "INT", "PAR", "PI"});

template <class Table>
std::string_view InsteadOf(const Table& table, std::string_view word) {
  const auto* const found = std::find_if(
      table.begin(), table.end(), [&](const Habit& habit) { return EqualIgnoringCase(habit.Word, word); });
  return found == table.end() ? std::string_view() : found->Instead;
}

template <class Table>
bool Holds(const Table& table, std::string_view word) {
  return std::any_of(table.begin(), table.end(),
                     [&](std::string_view known) { return EqualIgnoringCase(known, word); });
}

// The letters at the start of the line.
std::string_view FirstWord(std::string_view line) {
  return line.substr(
      0, static_cast<std::size_t>(std::find_if_not(line.begin(), line.end(), IsLetter) - line.begin()));
}

bool BeginsComment(std::string_view line) {
  return std::any_of(CommentMarks.begin(), CommentMarks.end(), [&](std::string_view mark) {
    return mark == "REM" ? EqualIgnoringCase(FirstWord(line), mark) : line.starts_with(mark);
  });
}

// "R = 20": one word of letters and figures, and a value.
bool IsAssignmentWithoutSign(std::string_view keyword, std::string_view line) {
  const auto fits = [](char c) { return IsDigit(c) || c == '_' || IsLetter(c); };
  const bool hasEqualSign = WithoutComment(line).find('=') != std::string_view::npos;
  return hasEqualSign && !keyword.empty() && !IsDigit(keyword.front()) &&
         std::all_of(keyword.begin(), keyword.end(), fits);
}

// Whether one letter is another, too many or missing, or two have changed places. The first letter is nearly
// always right.
bool IsOneSlip(std::string_view written, std::string_view meant) {
  const std::string a = UpperCase(written), b(meant);
  if (a.size() < 3 || a.front() != b.front()) return false;
  const auto [inA, inB] = std::mismatch(a.begin(), a.end(), b.begin(), b.end());
  const std::string_view restA(inA, a.end()), restB(inB, b.end());
  if (restA.empty() || restB.empty()) return restA.size() + restB.size() == 1;
  const bool isSwap = restA.size() > 1 && restB.size() > 1 && restA[0] == restB[1] && restA[1] == restB[0] &&
                      restA.substr(2) == restB.substr(2);
  return isSwap || restA.substr(1) == restB.substr(1) || restA.substr(1) == restB || restA == restB.substr(1);
}

}  // namespace

ScriptFault UnknownCommandFault(const RunContext& run, std::string_view keyword, std::string_view line) {
  const auto because = [](FaultReason reason, std::string_view value = {}) {
    return ScriptFault(FaultKind::UnknownCommand, reason, std::string(value));
  };
  const std::string_view target = Trim(WithoutComment(line));
  const std::string_view word = FirstWord(line);
  const bool isLineNumber = !target.empty() && std::all_of(target.begin(), target.end(), IsDigit);
  if (isLineNumber || run.Level().Labels.Find(target))
    return because(FaultReason::JumpIsGoto, Shorten(target, 60));
  if (BeginsComment(line)) return because(FaultReason::CommentIsApostrophe);
  if (EqualIgnoringCase(word, "IF") || EqualIgnoringCase(word, "IFT")) {
    return because(FaultReason::BlankBehindIf, word);
  }
  if (Holds(Loops, word)) return because(FaultReason::LoopIsPour, word);
  if (Holds(Branches, word)) return because(FaultReason::BranchIsJump, word);
  // "Cercle: 0, 0, 1" and "Cercle:0" have another sign for the "=".
  const std::size_t colon = keyword.find(':');
  if (colon != std::string_view::npos) {
    keyword = Trim(keyword.substr(0, colon));
    if (const CommandRow* const row = run.Commands.Find(keyword)) {
      return because(FaultReason::DidYouMean, std::string(row->Spelling()) + " =");
    }
  }
  std::string_view suggestion = InsteadOf(Commands, FoldedText(keyword));
  if (suggestion.empty()) suggestion = InsteadOf(Commands, FirstWord(keyword));
  if (suggestion.empty()) suggestion = run.Commands.Suggest(keyword);
  ScriptFault fault = because(suggestion.empty() ? FaultReason::None : FaultReason::DidYouMean, suggestion);
  if (suggestion.empty() && IsAssignmentWithoutSign(keyword, line)) {
    fault.Add(FaultReason::VariableHasSign, Shorten(keyword, 40));
  }
  return fault;
}

std::span<const Habit> CommandHabits() {
  return Commands;
}

std::string_view FunctionInstead(std::string_view name) {
  if (const std::string_view instead = InsteadOf(ForeignFunctions, name); !instead.empty()) return instead;
  if (IsFunctionName(name)) return {};
  const auto* const near = std::find_if(Known.begin(), Known.end(),
                                        [&](std::string_view known) { return IsOneSlip(name, known); });
  return near == Known.end() ? std::string_view() : *near;
}

bool HasDecimalComma(std::string_view text) {
  const std::size_t place = EndOfExpression(text, ",");
  return place > 0 && place + 1 < text.size() && text[place] == ',' && IsDigit(text[place - 1]) &&
         IsDigit(text[place + 1]);
}

bool HasWrongMinus(std::string_view text) {
  const std::size_t place = EndOfExpression(text, ",");
  return place < text.size() && WrongMinusLength(TrimLeft(text.substr(place))) > 0;
}

bool IsFunctionName(std::string_view name) {
  return Holds(Known, name);
}

std::span<const std::string_view> FunctionNames() {
  return Known;
}

}  // namespace vaxel
