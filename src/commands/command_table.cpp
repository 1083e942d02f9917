#include "commands/command_table.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <numeric>

#include "commands/handlers.h"
#include "resources/string_table.h"

namespace vaxel {
namespace {

constexpr std::int16_t Drawn = OrderDrawn;
constexpr std::int16_t Support = OrderDrawn | OrderSupport;
constexpr std::int16_t Included = OrderDrawn | OrderIncluded;

constexpr std::array Rows = std::to_array<CommandRow>({
    // An assignment: its keyword is the name of a variable, "%" stands for all of them.
    {"%", "%Var", nullptr, 252, 0, Scope::Everywhere, VariableUse::Raw, 0, CompileAssignment},
    {"+", "Plus", RunPlus, 234, Drawn},
    {"?", "?", RunCurrentPoint, 221, 0, Scope::Everywhere, VariableUse::Raw},
    {"ARC", "Arc", RunArc, 201, Support},
    {"CADRE", "Cadre", RunCadre, 202, Drawn},
    {"CADREA", "CadreA", RunCadreA, 203, Drawn},
    {"CADREAP", "CadreAP", RunCadreAP, 203, Drawn},
    {"CADREP", "CadreP", RunCadreP, 202, Drawn},
    {"CENTREE", "CentreE", RunCentreE, 204, OrderCentre, Scope::ScreenOnly, VariableUse::Replaced, 0, nullptr,
     3},
    {"CENTREI", "CentreI", RunCentreI, 205, OrderCentre, Scope::PrinterOnly, VariableUse::Replaced, 0,
     nullptr, 3},
    {"CERCLE", "Cercle", RunCercle, 206, Drawn},
    {"CERCLEI", "CercleI", RunCercleI, 206, Drawn},
    {"CERCLEP", "CercleP", RunCercleP, 207, Drawn},
    {"COULEUR", "Couleur", RunCouleur, 208},
    {"CT", "CT", RunCT, 209, Drawn},
    {"DECAL", "Decal", RunDecal, 210, Drawn},
    {"DEMILUNE", "DemiLune", RunDemiLune, 211, Drawn},
    {"DEMILUNEP", "DemiLuneP", RunDemiLuneP, 211, Drawn},
    {"DROITE", "Droite", RunDroite, 212, Support},
    {"DROITEV", "DroiteV", RunDroiteV, 213, Support},
    {"EPAIST", "EpaisT", RunEpaisT, 214},
    {"EXPOSANT", "Exposant", RunExposant, 215},
    {"FACTEUR", "Facteur", RunFacteur, 216},
    {"FACTEURS", "Facteurs", RunFacteur, 216},
    {"FICHIER", "Fichier", RunFichier, 217, Included, Scope::Everywhere, VariableUse::Raw},
    {"FLECHE", "Fleche", RunFleche, 218, Drawn},
    {"FLECHEP", "FlecheP", RunFlecheP, 218, Drawn},
    {"FORMATI", "FormatI", RunFormatI, 219, OrderFormat, Scope::MainScriptOnly, VariableUse::Replaced, 0,
     nullptr, 0},
    {"GOTO", "Goto", RunGoto, 220, 0, Scope::Everywhere, VariableUse::Replaced, 0, CompileGoto},
    {"GRAD", "Grad", RunGrad, 222, Drawn},
    {"GRAD1", "Grad1", RunGrad1, 223, Drawn, Scope::Everywhere, VariableUse::ValueLists},
    // The command behind THEN decides what an apostrophe is.
    {"IF", "IF", nullptr, 224, 0, Scope::Everywhere, VariableUse::Raw, 1, CompileIF},
    {"IFT", "IFT", nullptr, 224, 0, Scope::Everywhere, VariableUse::Raw, 1, CompileIFT},
    // Sets its bit itself: what only asks for a size draws nothing.
    {"IMAGE", "Image", RunImage, 225, 0, Scope::Everywhere, VariableUse::FourthList},
    {"INPUT", "Input", RunInput, 226, 0, Scope::Everywhere, VariableUse::Raw},
    {"INVERSION", "Inversion", RunInversion, 227},
    {"LISTEVAR", "ListeVar", RunListeVar, 228, 0, Scope::Everywhere, VariableUse::Replaced, 1},
    {"LVAR", "LVar", RunLVar, 229, 0, Scope::Everywhere, VariableUse::Raw},
    {"NPAGE", "NPage", RunNPage, 230},
    {"OPEN", "Open", RunOpen, 231},
    {"PALCOUL", "PalCoul", RunPalCoul, 232, Drawn},
    {"PALCOUL2", "PalCoul2", RunPalCoul2, 232, Drawn},
    {"PALCOUL3", "PalCoul3", RunPalCoul3, 232, Drawn},
    {"PERCER", "Percer", RunPercer, 233, Drawn},
    {"PERCERX", "PercerX", RunPercerX, 233, Drawn},
    {"PLUS", "Plus", RunPlus, 234, Drawn},
    {"POLICE", "Police", RunPolice, 235},
    {"POLY", "Poly", RunPoly, 236, Drawn},
    {"POLYP", "PolyP", RunPolyP, 236, Drawn},
    {"QA", "QA", RunQA, 237, Drawn},
    {"QA1", "QA1", RunQA1, 237, Drawn},
    {"QA12", "QA12", RunQA12, 237, Drawn},
    {"QA2", "QA2", RunQA2, 237, Drawn},
    {"SECT", "Sect", RunSect, 238, Drawn},
    {"SECTP", "SectP", RunSectP, 238, Drawn},
    {"SEPARATEUR", "Separateur", RunSeparateur, 239},
    {"SI", "IF", nullptr, 224, 0, Scope::Everywhere, VariableUse::Raw, 1, CompileIF},
    {"SIT", "IFT", nullptr, 224, 0, Scope::Everywhere, VariableUse::Raw, 1, CompileIFT},
    {"STOP", "Stop", RunStop, 240},
    {"TAILLEP", "TailleP", RunTailleP, 241, 0, Scope::Everywhere, VariableUse::Raw},
    // Sets its bit itself, when it has written the blank that precedes the first text of a page.
    {"TEXTE", "Texte", RunTexte, 242, 0, Scope::Everywhere, VariableUse::Replaced, 5},
    {"TEXTEC", "TexteC", RunTexteC, 243, Drawn, Scope::Everywhere, VariableUse::Replaced, 7},
    {"TRAIT", "Trait", RunTrait, 244, Drawn},
    {"VAL", "Val", RunVal, 245, Drawn},
    {"VAL1", "Val1", RunVal1, 247, Drawn, Scope::Everywhere, VariableUse::ValueTextLists},
    {"VAL1D", "Val1D", RunVal1D, 248, Drawn, Scope::Everywhere, VariableUse::OrientedValueTextLists},
    {"VAL1R", "Val1R", RunVal1R, 248, Drawn, Scope::Everywhere, VariableUse::OrientedValueTextLists},
    {"VALD", "ValD", RunValD, 246, Drawn},
    {"VALR", "ValR", RunValR, 246, Drawn},
    {"VOYANT", "Voyant", RunVoyant, 249, Drawn},
    {"X", "X", RunX, 250, Drawn},
    {"ZOOMINI", "ZoomIni", RunZoomIni, 251, 0, Scope::MainScriptOnly},
});

constexpr bool KeywordsAscend() {
  for (std::size_t i = 1; i < Rows.size(); ++i) {
    if (!(Rows[i - 1].Keyword < Rows[i].Keyword)) return false;
  }
  return true;
}

constexpr bool EveryRowHasHelp() {
  return std::all_of(Rows.begin(), Rows.end(), [](const CommandRow& row) { return HasString(row.HelpId); });
}

static_assert(KeywordsAscend(), "the table is in the order of its keywords, which are unique");
static_assert(EveryRowHasHelp(), "every command has its help text in all languages");

// A hash of the keyword finds its row at once; the few that meet in one place lie in the places behind it.
constexpr std::size_t IndexSize = 256;
using RowIndex = std::array<std::uint8_t, IndexSize>;
constexpr std::uint8_t NoRow = 0xFF;
static_assert(Rows.size() < NoRow);

constexpr std::size_t HashOf(std::string_view keyword) {
  std::uint32_t hash = 2166136261U;
  for (char c : keyword) hash = (hash ^ static_cast<unsigned char>(c)) * 16777619U;
  return (hash ^ hash >> 15) % IndexSize;
}

constexpr RowIndex MakeIndex() {
  RowIndex index{};
  index.fill(NoRow);
  for (std::size_t row = 0; row < Rows.size(); ++row) {
    std::size_t place = HashOf(Rows[row].Keyword);
    while (index[place] != NoRow) place = (place + 1) % IndexSize;
    index[place] = static_cast<std::uint8_t>(row);
  }
  return index;
}

constexpr RowIndex Index = MakeIndex();

// The least number of letters to insert, remove or replace; the words are at most as long as the longest
// keyword and a few letters more.
std::size_t EditDistance(std::string_view a, std::string_view b) {
  std::array<std::size_t, 32> row{};
  std::iota(row.begin(), row.begin() + static_cast<std::ptrdiff_t>(b.size()) + 1, 0U);
  for (std::size_t i = 1; i <= a.size(); ++i) {
    std::size_t diagonal = row[0];
    row[0] = i;
    for (std::size_t j = 1; j <= b.size(); ++j) {
      const std::size_t replaced = diagonal + (a[i - 1] == b[j - 1] ? 0 : 1);
      diagonal = row[j];
      row[j] = std::min({row[j] + 1, row[j - 1] + 1, replaced});
    }
  }
  return row[b.size()];
}

class TableCommands : public CommandSet {
 public:
  const CommandRow* Find(std::string_view keyword) const override {
    if (keyword.starts_with('%')) keyword = "%";
    for (std::size_t place = HashOf(keyword); Index[place] != NoRow; place = (place + 1) % IndexSize) {
      const CommandRow& row = Rows[Index[place]];
      if (row.Keyword == keyword) return &row;
    }
    return nullptr;
  }

  std::string_view Suggest(std::string_view keyword) const override {
    constexpr std::size_t longest = 14;
    if (keyword.size() < 3 || keyword.size() > longest) return {};
    // One slip in the shortest words, two, such as letters that changed places, in the others.
    std::size_t nearest = keyword.size() < 4 ? 2 : 3;
    std::string_view spelling;
    for (const CommandRow& row : Rows) {
      if (row.Keyword.size() < 2) continue;
      const std::size_t distance = EditDistance(keyword, row.Keyword);
      if (distance >= nearest) continue;
      nearest = distance;
      spelling = row.Spelling;
    }
    return spelling;
  }
};

}  // namespace

std::span<const CommandRow> CommandTable() {
  return Rows;
}

const CommandSet& AllCommands() {
  static const TableCommands commands;
  return commands;
}

}  // namespace vaxel
