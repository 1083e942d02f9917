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
constexpr std::array Rows = std::to_array<CommandRow>({
    // An assignment: its keyword is the name of a variable, "%" stands for all of them.
    {"%",
     nullptr,
     Help::Assignment,
     {.Form = LineForm::Assignment,
      .Variables = VariableUse::Raw,
      .Compile = CompileAssignment,
      .Shown = "%Var"}},
    {"+", RunPlus, Help::Plus, {.Sets = Drawn, .Most = 5, .Shown = "Plus"}},
    {"?", RunCurrentPoint, Help::CurrentPoint, {.Most = 2, .Variables = VariableUse::Raw}},
    {"Aiguille", RunAiguille, Help::Aiguille, {.Sets = Drawn, .Most = 5, .IsAddition = true}},
    {"Arc", RunArc, Help::Arc, {.Sets = Support, .Most = 4}},
    {"Cadre", RunCadre, Help::Cadre, {.Sets = Drawn, .Most = 5}},
    {"CadreA", RunCadreA, Help::CadreA, {.Sets = Drawn, .Most = 6}},
    {"CadreAP", RunCadreAP, Help::CadreA, {.Sets = Drawn, .Most = 6}},
    {"CadreP", RunCadreP, Help::Cadre, {.Sets = Drawn, .Most = 5}},
    {"CentreE",
     RunCentreE,
     Help::CentreE,
     {.Sets = OrderCentre, .Most = 3, .OrderLimit = 3, .Where = Scope::ScreenOnly}},
    {"CentreI",
     RunCentreI,
     Help::CentreI,
     {.Sets = OrderCentre, .Most = 3, .OrderLimit = 3, .Where = Scope::PrinterOnly}},
    {"Cercle", RunCercle, Help::Cercle, {.Sets = Drawn, .Most = 6}},
    {"CercleI", RunCercleI, Help::Cercle, {.Sets = Drawn, .Most = 6}},
    {"CercleP", RunCercleP, Help::CercleP, {.Sets = Drawn, .Most = 6}},
    {"Couleur", RunCouleur, Help::Couleur, {.Most = 1}},
    {"CT", RunCT, Help::CT, {.Sets = Drawn, .Most = 3}},
    {"Decal", RunDecal, Help::Decal, {.Sets = Drawn, .Most = 2}},
    {"DemiLune", RunDemiLune, Help::DemiLune, {.Sets = Drawn, .Most = 7}},
    {"DemiLuneP", RunDemiLuneP, Help::DemiLune, {.Sets = Drawn, .Most = 7}},
    {"Droite", RunDroite, Help::Droite, {.Sets = Support, .Most = 4}},
    {"DroiteV", RunDroiteV, Help::DroiteV, {.Sets = Support, .Most = 4}},
    {"Echelle", RunEchelle, Help::Echelle, {.Compile = CompileEchelle, .IsAddition = true}},
    {"EpaisT", RunEpaisT, Help::EpaisT, {.Most = 1}},
    {"Exposant", RunExposant, Help::Exposant, {.Most = 4}},
    {"Facteur", RunFacteur, Help::Facteur},
    {"Facteurs", RunFacteur, Help::Facteur},
    {"Fichier", RunFichier, Help::Fichier, {.Sets = Included, .Variables = VariableUse::Raw}},
    {"Fleche", RunFleche, Help::Fleche, {.Sets = Drawn, .Most = 7}},
    {"FlecheP", RunFlecheP, Help::Fleche, {.Sets = Drawn, .Most = 7}},
    {"FormatI",
     RunFormatI,
     Help::FormatI,
     {.Sets = OrderFormat, .Most = 1, .OrderLimit = 0, .Where = Scope::MainScriptOnly}},
    {"FormatV", RunFormatV, Help::FormatV, {.IsAddition = true}},
    {"Goto", RunGoto, Help::Goto, {.Compile = CompileGoto}},
    {"Grad", RunGrad, Help::Grad, {.Sets = Drawn, .Most = 6}},
    {"Grad1", RunGrad1, Help::Grad1, {.Sets = Drawn, .Variables = VariableUse::ValueLists}},
    {"GradV",
     RunGradV,
     Help::GradV,
     {.Sets = Drawn, .Most = 7, .Variables = VariableUse::FirstList, .IsAddition = true}},
    // The command after THEN decides what an apostrophe is.
    {"IF",
     nullptr,
     Help::IF,
     {.Form = LineForm::Condition, .Variables = VariableUse::Raw, .Compile = CompileIF}},
    {"IFNDEF",
     nullptr,
     Help::IFNDEF,
     {.Form = LineForm::Condition,
      .Variables = VariableUse::Raw,
      .Compile = CompileIFNDEF,
      .IsAddition = true}},
    {"IFT",
     nullptr,
     Help::IF,
     {.Form = LineForm::Condition, .Variables = VariableUse::Raw, .Compile = CompileIFT}},
    // The handler sets the bit itself: what only asks for a size draws nothing.
    {"Image", RunImage, Help::Image, {.Most = 5, .Variables = VariableUse::FourthList}},
    {"Input", RunInput, Help::Input, {.Variables = VariableUse::Raw}},
    {"Inversion", RunInversion, Help::Inversion, {.Most = 0}},
    {"ListeVar", RunListeVar, Help::ListeVar, {.Form = LineForm::Text, .TextFrom = 1}},
    {"LVar", RunLVar, Help::LVar, {.Variables = VariableUse::Raw}},
    {"NPage", RunNPage, Help::NPage, {.Most = 0}},
    {"Open", RunOpen, Help::Open, {.Most = 1}},
    {"PalCoul", RunPalCoul, Help::PalCoul, {.Sets = Drawn, .Most = 3}},
    {"PalCoul2", RunPalCoul2, Help::PalCoul, {.Sets = Drawn, .Most = 3}},
    {"PalCoul3", RunPalCoul3, Help::PalCoul, {.Sets = Drawn, .Most = 3}},
    {"Percer", RunPercer, Help::Percer, {.Sets = Drawn, .Most = 4}},
    {"PercerX", RunPercerX, Help::Percer, {.Sets = Drawn, .Most = 4}},
    {"Plus", RunPlus, Help::Plus, {.Sets = Drawn, .Most = 5}},
    {"Police", RunPolice, Help::Police, {.Most = 2}},
    {"Poly", RunPoly, Help::Poly, {.Sets = Drawn}},
    {"PolyP", RunPolyP, Help::Poly, {.Sets = Drawn}},
    {"PosV",
     RunPosV,
     Help::PosV,
     {.Sets = Drawn, .Most = 5, .Variables = VariableUse::Raw, .IsAddition = true}},
    {"Pour",
     nullptr,
     Help::Pour,
     {.Variables = VariableUse::Raw, .Compile = CompilePour, .IsAddition = true, .Block = BlockEdge::Begin}},
    {"QA", RunQA, Help::QA, {.Sets = Drawn, .Most = 10}},
    {"QA1", RunQA1, Help::QA, {.Sets = Drawn, .Most = 10}},
    {"QA12", RunQA12, Help::QA, {.Sets = Drawn, .Most = 10}},
    {"QA2", RunQA2, Help::QA, {.Sets = Drawn, .Most = 10}},
    {"Sect", RunSect, Help::Sect, {.Sets = Drawn}},
    {"SectP", RunSectP, Help::Sect, {.Sets = Drawn}},
    {"Separateur", RunSeparateur, Help::Separateur, {.Most = 2}},
    {"SI",
     nullptr,
     Help::IF,
     {.Form = LineForm::Condition, .Variables = VariableUse::Raw, .Compile = CompileIF, .Shown = "IF"}},
    {"SIT",
     nullptr,
     Help::IF,
     {.Form = LineForm::Condition, .Variables = VariableUse::Raw, .Compile = CompileIFT, .Shown = "IFT"}},
    {"Stop", RunStop, Help::Stop, {.Most = 0}},
    {"Suivant",
     nullptr,
     Help::Suivant,
     {.Variables = VariableUse::Raw, .Compile = CompileSuivant, .IsAddition = true, .Block = BlockEdge::End}},
    {"TailleP", RunTailleP, Help::TailleP, {.Most = 4, .Variables = VariableUse::Raw}},
    // The handler sets the bit itself, when it has written the blank that precedes the first text of a page.
    {"Texte", RunTexte, Help::Texte, {.Form = LineForm::Text, .TextFrom = 5}},
    {"TexteC", RunTexteC, Help::TexteC, {.Sets = Drawn, .Form = LineForm::Text, .TextFrom = 7}},
    {"Trait", RunTrait, Help::Trait, {.Sets = Drawn}},
    {"Val", RunVal, Help::Val, {.Sets = Drawn, .Most = 7}},
    {"Val1", RunVal1, Help::Val1, {.Sets = Drawn, .Variables = VariableUse::ValueTextLists}},
    {"Val1D", RunVal1D, Help::Val1D, {.Sets = Drawn, .Variables = VariableUse::OrientedValueTextLists}},
    {"Val1R", RunVal1R, Help::Val1D, {.Sets = Drawn, .Variables = VariableUse::OrientedValueTextLists}},
    {"ValD", RunValD, Help::ValD, {.Sets = Drawn, .Most = 8}},
    {"ValR", RunValR, Help::ValD, {.Sets = Drawn, .Most = 8}},
    {"ValV",
     RunValV,
     Help::ValV,
     {.Sets = Drawn, .Most = 5, .Variables = VariableUse::FirstList, .IsAddition = true}},
    {"ValVD",
     RunValVD,
     Help::ValVD,
     {.Sets = Drawn, .Most = 6, .Variables = VariableUse::SecondList, .IsAddition = true}},
    {"ValVR",
     RunValVR,
     Help::ValVD,
     {.Sets = Drawn, .Most = 6, .Variables = VariableUse::SecondList, .IsAddition = true}},
    {"Voyant", RunVoyant, Help::Voyant, {.Sets = Drawn, .Most = 5}},
    {"X", RunX, Help::X, {.Sets = Drawn, .Most = 5}},
    {"ZoomIni", RunZoomIni, Help::ZoomIni, {.Most = 1, .Where = Scope::MainScriptOnly}},
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
