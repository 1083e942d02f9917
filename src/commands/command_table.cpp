#include "commands/command_table.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <numeric>

#include "commands/handlers.h"
#include "resources/text_id.h"

namespace vaxel {
namespace {

constexpr std::int16_t Drawn = OrderDrawn;
constexpr std::int16_t Support = OrderDrawn | OrderSupport;
constexpr std::int16_t Included = OrderDrawn | OrderIncluded;

constexpr std::array Rows = std::to_array<CommandRow>({
    // An assignment: its keyword is the name of a variable, "%" stands for all of them.
    {"%", "%Var", RunAssignment, Help::Assignment, 0, Scope::Everywhere, VariableUse::Raw, 0,
     PrepareAssignment},
    {"+", "Plus", RunPlus, Help::Plus, Drawn},
    {"?", "?", RunCurrentPoint, Help::CurrentPoint, 0, Scope::Everywhere, VariableUse::Raw},
    {"ARC", "Arc", RunArc, Help::Arc, Support},
    {"CADRE", "Cadre", RunCadre, Help::Cadre, Drawn},
    {"CADREA", "CadreA", RunCadreA, Help::CadreA, Drawn},
    {"CADREAP", "CadreAP", RunCadreAP, Help::CadreA, Drawn},
    {"CADREP", "CadreP", RunCadreP, Help::Cadre, Drawn},
    {"CENTREE", "CentreE", RunCentreE, Help::CentreE, OrderCentre, Scope::ScreenOnly, VariableUse::Replaced,
     0, nullptr, 3},
    {"CENTREI", "CentreI", RunCentreI, Help::CentreI, OrderCentre, Scope::PrinterOnly, VariableUse::Replaced,
     0, nullptr, 3},
    {"CERCLE", "Cercle", RunCercle, Help::Cercle, Drawn},
    {"CERCLEI", "CercleI", RunCercleI, Help::Cercle, Drawn},
    {"CERCLEP", "CercleP", RunCercleP, Help::CercleP, Drawn},
    {"COULEUR", "Couleur", RunCouleur, Help::Couleur},
    {"CT", "CT", RunCT, Help::CT, Drawn},
    {"DECAL", "Decal", RunDecal, Help::Decal, Drawn},
    {"DEMILUNE", "DemiLune", RunDemiLune, Help::DemiLune, Drawn},
    {"DEMILUNEP", "DemiLuneP", RunDemiLuneP, Help::DemiLune, Drawn},
    {"DROITE", "Droite", RunDroite, Help::Droite, Support},
    {"DROITEV", "DroiteV", RunDroiteV, Help::DroiteV, Support},
    {"EPAIST", "EpaisT", RunEpaisT, Help::EpaisT},
    {"EXPOSANT", "Exposant", RunExposant, Help::Exposant},
    {"FACTEUR", "Facteur", RunFacteur, Help::Facteur},
    {"FACTEURS", "Facteurs", RunFacteur, Help::Facteur},
    {"FICHIER", "Fichier", RunFichier, Help::Fichier, Included, Scope::Everywhere, VariableUse::Raw},
    {"FLECHE", "Fleche", RunFleche, Help::Fleche, Drawn},
    {"FLECHEP", "FlecheP", RunFlecheP, Help::Fleche, Drawn},
    {"FORMATI", "FormatI", RunFormatI, Help::FormatI, OrderFormat, Scope::MainScriptOnly,
     VariableUse::Replaced, 0, nullptr, 0},
    {"GOTO", "Goto", RunGoto, Help::Goto, 0, Scope::Everywhere, VariableUse::Replaced, 0, PrepareGoto},
    {"GRAD", "Grad", RunGrad, Help::Grad, Drawn},
    {"GRAD1", "Grad1", RunGrad1, Help::Grad1, Drawn, Scope::Everywhere, VariableUse::ValueLists},
    // The command behind THEN decides what an apostrophe is.
    {"IF", "IF", RunIF, Help::IF, 0, Scope::Everywhere, VariableUse::Raw, 1, PrepareIF},
    {"IFT", "IFT", RunIFT, Help::IF, 0, Scope::Everywhere, VariableUse::Raw, 1},
    // Sets its bit itself: what only asks for a size draws nothing.
    {"IMAGE", "Image", RunImage, Help::Image, 0, Scope::Everywhere, VariableUse::FourthList},
    {"INPUT", "Input", RunInput, Help::Input, 0, Scope::Everywhere, VariableUse::Raw},
    {"INVERSION", "Inversion", RunInversion, Help::Inversion},
    {"LISTEVAR", "ListeVar", RunListeVar, Help::ListeVar, 0, Scope::Everywhere, VariableUse::Replaced, 1},
    {"LVAR", "LVar", RunLVar, Help::LVar, 0, Scope::Everywhere, VariableUse::Raw},
    {"NPAGE", "NPage", RunNPage, Help::NPage},
    {"OPEN", "Open", RunOpen, Help::Open},
    {"PALCOUL", "PalCoul", RunPalCoul, Help::PalCoul, Drawn},
    {"PALCOUL2", "PalCoul2", RunPalCoul2, Help::PalCoul, Drawn},
    {"PALCOUL3", "PalCoul3", RunPalCoul3, Help::PalCoul, Drawn},
    {"PERCER", "Percer", RunPercer, Help::Percer, Drawn},
    {"PERCERX", "PercerX", RunPercerX, Help::Percer, Drawn},
    {"PLUS", "Plus", RunPlus, Help::Plus, Drawn},
    {"POLICE", "Police", RunPolice, Help::Police},
    {"POLY", "Poly", RunPoly, Help::Poly, Drawn},
    {"POLYP", "PolyP", RunPolyP, Help::Poly, Drawn},
    {"QA", "QA", RunQA, Help::QA, Drawn},
    {"QA1", "QA1", RunQA1, Help::QA, Drawn},
    {"QA12", "QA12", RunQA12, Help::QA, Drawn},
    {"QA2", "QA2", RunQA2, Help::QA, Drawn},
    {"SECT", "Sect", RunSect, Help::Sect, Drawn},
    {"SECTP", "SectP", RunSectP, Help::Sect, Drawn},
    {"SEPARATEUR", "Separateur", RunSeparateur, Help::Separateur},
    {"SI", "IF", RunIF, Help::IF, 0, Scope::Everywhere, VariableUse::Raw, 1, PrepareIF},
    {"SIT", "IFT", RunIFT, Help::IF, 0, Scope::Everywhere, VariableUse::Raw, 1},
    {"STOP", "Stop", RunStop, Help::Stop},
    {"TAILLEP", "TailleP", RunTailleP, Help::TailleP, 0, Scope::Everywhere, VariableUse::Raw},
    // Sets its bit itself, when it has written the blank that precedes the first text of a page.
    {"TEXTE", "Texte", RunTexte, Help::Texte, 0, Scope::Everywhere, VariableUse::Replaced, 5},
    {"TEXTEC", "TexteC", RunTexteC, Help::TexteC, Drawn, Scope::Everywhere, VariableUse::Replaced, 7},
    {"TRAIT", "Trait", RunTrait, Help::Trait, Drawn},
    {"VAL", "Val", RunVal, Help::Val, Drawn},
    {"VAL1", "Val1", RunVal1, Help::Val1, Drawn, Scope::Everywhere, VariableUse::ValueTextLists},
    {"VAL1D", "Val1D", RunVal1D, Help::Val1D, Drawn, Scope::Everywhere, VariableUse::OrientedValueTextLists},
    {"VAL1R", "Val1R", RunVal1R, Help::Val1D, Drawn, Scope::Everywhere, VariableUse::OrientedValueTextLists},
    {"VALD", "ValD", RunValD, Help::ValD, Drawn},
    {"VALR", "ValR", RunValR, Help::ValD, Drawn},
    {"VOYANT", "Voyant", RunVoyant, Help::Voyant, Drawn},
    {"X", "X", RunX, Help::X, Drawn},
    {"ZOOMINI", "ZoomIni", RunZoomIni, Help::ZoomIni, 0, Scope::MainScriptOnly},
});

constexpr bool KeywordsAscend() {
  for (std::size_t i = 1; i < Rows.size(); ++i) {
    if (!(Rows[i - 1].Keyword < Rows[i].Keyword)) return false;
  }
  return true;
}

constexpr bool EveryRowHasHelp() {
  return std::all_of(Rows.begin(), Rows.end(),
                     [](const CommandRow& row) { return row.HelpId != TextId::None; });
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
