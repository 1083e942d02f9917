#include "commands/command_table.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <numeric>

#include "commands/handlers.h"

namespace vaxel {
namespace {

constexpr std::int16_t Drawn = OrderDrawn;
constexpr std::int16_t Support = OrderDrawn | OrderSupport;
constexpr std::int16_t Included = OrderDrawn | OrderIncluded;

// A row: the keyword as users see it, its handler, its syntax help, and what is not as with most commands:
//   Sets        the order bits that the command sets
//   Most        how many parameters count, where that is not any number
//   OrderLimit  the order word of the main script must not exceed it before the command
//   Where       on which target, or in which script, the command counts; elsewhere it is passed over
//   Form        how the line after the keyword is read
//   TextFrom    of the form Text: the parameter that is the text, with all that follows
//   Variables   in which parameters references to variables are replaced
//   Compile     what reads the line in its own way; the handler may then be missing
//   Shown       the keyword that users see instead of this one
//   IsAddition  whether the language did not always have the command
//   Block       whether it begins or ends a loop
//   Takes       what its parameters are, see commands/parameter_list.h
constexpr std::array Rows = std::to_array<CommandRow>({
    // An assignment: its keyword is the name of a variable, "%" stands for all of them.
    {"%",
     nullptr,
     Help::Assignment,
     {.Form = LineForm::Assignment,
      .Variables = VariableUse::Raw,
      .Compile = CompileAssignment,
      .Shown = "%Var",
      .Takes = "expression"}},
    {"+",
     RunPlus,
     Help::Plus,
     {.Sets = Drawn, .Most = 5, .Shown = "Plus", .Takes = "x?, y?, number, colour?, pen?"}},
    {"?",
     RunCurrentPoint,
     Help::CurrentPoint,
     {.Most = 2, .Variables = VariableUse::Raw, .Takes = "variable, variable"}},
    {"Aiguille",
     RunAiguille,
     Help::Aiguille,
     {.Sets = Drawn, .Most = 5, .IsAddition = true, .Takes = "value, number, number, number=0, colour?"}},
    {"Arc", RunArc, Help::Arc, {.Sets = Support, .Most = 4, .Takes = "number, number, number, colourN?"}},
    {"Cadre", RunCadre, Help::Cadre, {.Sets = Drawn, .Most = 5, .Takes = "x?, y?, x, y, colour?"}},
    {"CadreA",
     RunCadreA,
     Help::CadreA,
     {.Sets = Drawn, .Most = 6, .Takes = "x?, y?, x, y, number§corner, colour?"}},
    {"CadreAP",
     RunCadreAP,
     Help::CadreA,
     {.Sets = Drawn, .Most = 6, .Takes = "x?, y?, x, y, number§corner, colour?"}},
    {"CadreP", RunCadreP, Help::Cadre, {.Sets = Drawn, .Most = 5, .Takes = "x?, y?, x, y, colour?"}},
    {"CentreE",
     RunCentreE,
     Help::CentreE,
     {.Sets = OrderCentre,
      .Most = 3,
      .OrderLimit = 3,
      .Where = Scope::ScreenOnly,
      .Takes = "number, number, colourN?"}},
    {"CentreI",
     RunCentreI,
     Help::CentreI,
     {.Sets = OrderCentre,
      .Most = 3,
      .OrderLimit = 3,
      .Where = Scope::PrinterOnly,
      .Takes = "number, number, colourN?"}},
    {"Cercle",
     RunCercle,
     Help::Cercle,
     {.Sets = Drawn, .Most = 6, .Takes = "x?, y?, number§number=1, number=0, number=360, colour?"}},
    {"CercleI",
     RunCercleI,
     Help::Cercle,
     {.Sets = Drawn, .Most = 6, .Takes = "x?, y?, number§number=1, number=0, number=360, colour?"}},
    {"CercleP",
     RunCercleP,
     Help::CercleP,
     {.Sets = Drawn, .Most = 6, .Takes = "x?, y?, number§number=1, number=0, number=360, colour?"}},
    {"Couleur", RunCouleur, Help::Couleur, {.Most = 1, .Takes = "colour"}},
    {"CT", RunCT, Help::CT, {.Sets = Drawn, .Most = 3, .Takes = "x?, y?, colourN?"}},
    {"Decal", RunDecal, Help::Decal, {.Sets = Drawn, .Most = 2, .Takes = "number, colourN?"}},
    {"DemiLune",
     RunDemiLune,
     Help::DemiLune,
     {.Sets = Drawn, .Most = 7, .Takes = "x?, y?, number, number, number, number, colour?"}},
    {"DemiLuneP",
     RunDemiLuneP,
     Help::DemiLune,
     {.Sets = Drawn, .Most = 7, .Takes = "x?, y?, number, number, number, number, colour?"}},
    {"Droite",
     RunDroite,
     Help::Droite,
     {.Sets = Support, .Most = 4, .Takes = "number, number, number=0, colourN?"}},
    {"DroiteV",
     RunDroiteV,
     Help::DroiteV,
     {.Sets = Support, .Most = 4, .Takes = "number, number, number=0, colourN?"}},
    {"Echelle",
     RunEchelle,
     Help::Echelle,
     {.Compile = CompileEchelle,
      .IsAddition = true,
      .Takes = "number, number | number, number, law | table, data, straight | liste, list, straight |"}},
    {"EpaisT", RunEpaisT, Help::EpaisT, {.Most = 1, .Takes = "pen | penmm"}},
    {"Exposant", RunExposant, Help::Exposant, {.Most = 4, .Takes = "number | L, number, number=1, number=1"}},
    {"Facteur", RunFacteur, Help::Facteur, {.Takes = "number | number, number"}},
    {"Facteurs", RunFacteur, Help::Facteur, {.Takes = "number | number, number"}},
    {"Fichier",
     RunFichier,
     Help::Fichier,
     {.Sets = Included, .Variables = VariableUse::Raw, .Takes = "script, x=0, y=0, *argument"}},
    {"Fleche",
     RunFleche,
     Help::Fleche,
     {.Sets = Drawn, .Most = 7, .Takes = "x?, y?, number, number, number=0, number=30, colour?"}},
    {"FlecheP",
     RunFlecheP,
     Help::Fleche,
     {.Sets = Drawn, .Most = 7, .Takes = "x?, y?, number, number, number=0, number=30, colour?"}},
    {"FormatI",
     RunFormatI,
     Help::FormatI,
     {.Sets = OrderFormat, .Most = 1, .OrderLimit = 0, .Where = Scope::MainScriptOnly, .Takes = "page"}},
    {"FormatV", RunFormatV, Help::FormatV, {.IsAddition = true, .Takes = "format"}},
    {"Goto", RunGoto, Help::Goto, {.Compile = CompileGoto, .Takes = "label"}},
    {"Grad",
     RunGrad,
     Help::Grad,
     {.Sets = Drawn, .Most = 6, .Takes = "number, number, number=0, number=#1, pen?, colour?"}},
    {"Grad1",
     RunGrad1,
     Help::Grad1,
     {.Sets = Drawn, .Variables = VariableUse::ValueLists, .Takes = "*value§list, number, pen?, colour?"}},
    {"GradV",
     RunGradV,
     Help::GradV,
     {.Sets = Drawn,
      .Most = 7,
      .Variables = VariableUse::FirstList,
      .IsAddition = true,
      .Takes = "step, number§shape, value?, value?, pen?, colour?, number"}},
    // The command after THEN decides what an apostrophe is.
    {"IF",
     nullptr,
     Help::IF,
     {.Form = LineForm::Condition,
      .Variables = VariableUse::Raw,
      .Compile = CompileIF,
      .Takes = "condition, label | condition, command"}},
    {"IFNDEF",
     nullptr,
     Help::IFNDEF,
     {.Form = LineForm::Condition,
      .Variables = VariableUse::Raw,
      .Compile = CompileIFNDEF,
      .IsAddition = true,
      .Takes = "condition, command"}},
    {"IFT",
     nullptr,
     Help::IF,
     {.Form = LineForm::Condition,
      .Variables = VariableUse::Raw,
      .Compile = CompileIFT,
      .Takes = "condition, label | condition, command"}},
    // The handler sets the bit itself: what only asks for a size draws nothing.
    {"Image",
     RunImage,
     Help::Image,
     {.Most = 5,
      .Variables = VariableUse::FourthList,
      .Takes = "picture, x?, y?, scale=1, position | picture, x?, y?, box, position | picture, x, y, "
               "pixels§variable§variable"}},
    {"Input", RunInput, Help::Input, {.Variables = VariableUse::Raw, .Takes = "prompt, variable"}},
    {"Inversion", RunInversion, Help::Inversion, {.Most = 0}},
    {"ListeVar", RunListeVar, Help::ListeVar, {.Form = LineForm::Text, .TextFrom = 1, .Takes = "text"}},
    {"LVar", RunLVar, Help::LVar, {.Variables = VariableUse::Raw, .Takes = "variable"}},
    {"NPage", RunNPage, Help::NPage, {.Most = 0}},
    {"Open", RunOpen, Help::Open, {.Most = 1, .Takes = "data"}},
    {"PalCoul", RunPalCoul, Help::PalCoul, {.Sets = Drawn, .Most = 3, .Takes = "number, number, number"}},
    {"PalCoul2", RunPalCoul2, Help::PalCoul, {.Sets = Drawn, .Most = 3, .Takes = "number, number, number"}},
    {"PalCoul3", RunPalCoul3, Help::PalCoul, {.Sets = Drawn, .Most = 3, .Takes = "number, number, number"}},
    {"Percer", RunPercer, Help::Percer, {.Sets = Drawn, .Most = 4, .Takes = "x?, y?, number, colour?"}},
    {"PercerX", RunPercerX, Help::Percer, {.Sets = Drawn, .Most = 4, .Takes = "x?, y?, number, colour?"}},
    {"Plus", RunPlus, Help::Plus, {.Sets = Drawn, .Most = 5, .Takes = "x?, y?, number, colour?, pen?"}},
    {"Police", RunPolice, Help::Police, {.Most = 2, .Takes = "font | font?, number=1"}},
    {"Poly", RunPoly, Help::Poly, {.Sets = Drawn, .Takes = "leadcolour?, x?, y?, x, y, *x, y"}},
    {"PolyP", RunPolyP, Help::Poly, {.Sets = Drawn, .Takes = "leadcolour?, x?, y?, x, y, *x, y"}},
    {"PosV",
     RunPosV,
     Help::PosV,
     {.Sets = Drawn,
      .Most = 5,
      .Variables = VariableUse::Raw,
      .IsAddition = true,
      .Takes = "value, number, variable, variable, variable"}},
    {"Pour",
     nullptr,
     Help::Pour,
     {.Variables = VariableUse::Raw,
      .Compile = CompilePour,
      .IsAddition = true,
      .Block = BlockEdge::Begin,
      .Takes = "variable, bound, bound, bound=1"}},
    {"QA",
     RunQA,
     Help::QA,
     {.Sets = Drawn,
      .Most = 10,
      .Takes = "x?, y?, x, y, number, number§number=#6, number=10§number=0§pins, number=1, pen?, "
               "colour?§colour=#10"}},
    {"QA1",
     RunQA1,
     Help::QA,
     {.Sets = Drawn,
      .Most = 10,
      .Takes = "x?, y?, x, y, number, number§number=#6, number=10§number=0§pins, number=1, pen?, "
               "colour?§colour=#10"}},
    {"QA12",
     RunQA12,
     Help::QA,
     {.Sets = Drawn,
      .Most = 10,
      .Takes = "x?, y?, x, y, number, number§number=#6, number=10§number=0§pins, number=1, pen?, "
               "colour?§colour=#10"}},
    {"QA2",
     RunQA2,
     Help::QA,
     {.Sets = Drawn,
      .Most = 10,
      .Takes = "x?, y?, x, y, number, number§number=#6, number=10§number=0§pins, number=1, pen?, "
               "colour?§colour=#10"}},
    {"Sect", RunSect, Help::Sect, {.Sets = Drawn, .Takes = "*value, value, number=0, number, colour?"}},
    {"SectP", RunSectP, Help::Sect, {.Sets = Drawn, .Takes = "*value, value, number=0, number, colour?"}},
    {"Separateur", RunSeparateur, Help::Separateur, {.Most = 2, .Takes = "separator?, separator?"}},
    {"SI",
     nullptr,
     Help::IF,
     {.Form = LineForm::Condition,
      .Variables = VariableUse::Raw,
      .Compile = CompileIF,
      .Shown = "IF",
      .Takes = "condition, label | condition, command"}},
    {"SIT",
     nullptr,
     Help::IF,
     {.Form = LineForm::Condition,
      .Variables = VariableUse::Raw,
      .Compile = CompileIFT,
      .Shown = "IFT",
      .Takes = "condition, label | condition, command"}},
    {"Stop", RunStop, Help::Stop, {.Most = 0}},
    {"Suivant",
     nullptr,
     Help::Suivant,
     {.Variables = VariableUse::Raw,
      .Compile = CompileSuivant,
      .IsAddition = true,
      .Block = BlockEdge::End,
      .Takes = "variable"}},
    {"TailleP",
     RunTailleP,
     Help::TailleP,
     {.Most = 4,
      .Variables = VariableUse::Raw,
      .Takes = "multiplier | size | change?, text, variable, variable"}},
    // The handler sets the bit itself, when it has written the blank that precedes the first text of a page.
    {"Texte",
     RunTexte,
     Help::Texte,
     {.Form = LineForm::Text, .TextFrom = 5, .Takes = "x?, y?, colour?, letters, text"}},
    {"TexteC",
     RunTexteC,
     Help::TexteC,
     {.Sets = Drawn,
      .Form = LineForm::Text,
      .TextFrom = 7,
      .Takes = "x?, y?, number, number, colour?, arcletters, text"}},
    {"Trait", RunTrait, Help::Trait, {.Sets = Drawn, .Takes = "x?, y?, x, y, pen?, colour?, *x, y"}},
    {"Val",
     RunVal,
     Help::Val,
     {.Sets = Drawn,
      .Most = 7,
      .Takes = "number, number§unit, number§unit, number, number=0, number=#1, colour?"}},
    {"Val1",
     RunVal1,
     Help::Val1,
     {.Sets = Drawn,
      .Variables = VariableUse::ValueTextLists,
      .Takes = "*value§list, text, number, colour?"}},
    {"Val1D",
     RunVal1D,
     Help::Val1D,
     {.Sets = Drawn,
      .Variables = VariableUse::OrientedValueTextLists,
      .Takes = "orientation, *value, text, number, colour?"}},
    {"Val1R",
     RunVal1R,
     Help::Val1D,
     {.Sets = Drawn,
      .Variables = VariableUse::OrientedValueTextLists,
      .Takes = "orientation, *value, text, number, colour?"}},
    {"ValD",
     RunValD,
     Help::ValD,
     {.Sets = Drawn,
      .Most = 8,
      .Takes = "orientation, number, number§unit, number§unit, number, number=0, number=#2, colour?"}},
    {"ValR",
     RunValR,
     Help::ValD,
     {.Sets = Drawn,
      .Most = 8,
      .Takes = "orientation, number, number§unit, number§unit, number, number=0, number=#2, colour?"}},
    {"ValV",
     RunValV,
     Help::ValV,
     {.Sets = Drawn,
      .Most = 5,
      .Variables = VariableUse::FirstList,
      .IsAddition = true,
      .Takes = "step§unit§notation, number, value?, value?, colour?"}},
    {"ValVD",
     RunValVD,
     Help::ValVD,
     {.Sets = Drawn,
      .Most = 6,
      .Variables = VariableUse::SecondList,
      .IsAddition = true,
      .Takes = "orientation, step§unit§notation, number, value?, value?, colour?"}},
    {"ValVR",
     RunValVR,
     Help::ValVD,
     {.Sets = Drawn,
      .Most = 6,
      .Variables = VariableUse::SecondList,
      .IsAddition = true,
      .Takes = "orientation, step§unit§notation, number, value?, value?, colour?"}},
    {"Voyant",
     RunVoyant,
     Help::Voyant,
     {.Sets = Drawn, .Most = 5, .Takes = "x?, y?, number, light, colour?"}},
    {"X", RunX, Help::X, {.Sets = Drawn, .Most = 5, .Takes = "x?, y?, number, colour?, pen?"}},
    {"ZoomIni", RunZoomIni, Help::ZoomIni, {.Most = 1, .Where = Scope::MainScriptOnly, .Takes = "number"}},
});

constexpr char Upper(char c) {
  return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

constexpr bool IsBefore(std::string_view a, std::string_view b) {
  return std::lexicographical_compare(a.begin(), a.end(), b.begin(), b.end(),
                                      [](char left, char right) { return Upper(left) < Upper(right); });
}

constexpr bool AreSame(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](char left, char right) { return Upper(left) == Upper(right); });
}

constexpr bool KeywordsAscend() {
  for (std::size_t i = 1; i < Rows.size(); ++i) {
    if (!IsBefore(Rows[i - 1].Keyword, Rows[i].Keyword)) return false;
  }
  return true;
}

constexpr bool EveryRowHasHelp() {
  return std::all_of(Rows.begin(), Rows.end(),
                     [](const CommandRow& row) { return row.Help != TextId::None; });
}

constexpr bool EveryTextHasItsPlace() {
  return std::all_of(Rows.begin(), Rows.end(), [](const CommandRow& row) {
    return (row.Rules.Form == LineForm::Text) == (row.Rules.TextFrom != 0);
  });
}

static_assert(KeywordsAscend(), "the table is in the order of its keywords, which are unique");
static_assert(EveryRowHasHelp(), "every command has its help text");
static_assert(EveryTextHasItsPlace(), "a line with a text says which parameter that is");

// A hash of the keyword finds its row at once; the few that meet in one place lie in the places after it.
constexpr std::size_t IndexSize = 256;
using RowIndex = std::array<std::uint8_t, IndexSize>;
constexpr std::uint8_t NoRow = 0xFF;
static_assert(Rows.size() < NoRow);

constexpr std::size_t HashOf(std::string_view keyword) {
  std::uint32_t hash = 2166136261U;
  for (char c : keyword) hash = (hash ^ static_cast<unsigned char>(Upper(c))) * 16777619U;
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
      const std::size_t replaced = diagonal + (Upper(a[i - 1]) == Upper(b[j - 1]) ? 0 : 1);
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
      if (AreSame(row.Keyword, keyword)) return &row;
    }
    return nullptr;
  }

  std::string_view Suggest(std::string_view keyword) const override {
    constexpr std::size_t longest = 14;
    if (keyword.size() < 3 || keyword.size() > longest) return {};
    // The shortest words may have one slip, the others two, such as letters that changed places.
    std::size_t nearest = keyword.size() < 4 ? 2 : 3;
    std::string_view spelling;
    for (const CommandRow& row : Rows) {
      if (row.Keyword.size() < 2) continue;
      const std::size_t distance = EditDistance(keyword, row.Keyword);
      if (distance >= nearest) continue;
      nearest = distance;
      spelling = row.Spelling();
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
