#include "app/parameter_choices.h"

#include <array>

namespace vaxel {
namespace {

using Choices = ParameterChoice;

constexpr auto TextLetters = std::to_array<Choices>({{"*", TextId::OptionMultiplier},
                                                     {"R", TextId::OptionRotation},
                                                     {"#", TextId::OptionNextLine},
                                                     {"G", TextId::OptionBold},
                                                     {"B", TextId::OptionBold},
                                                     {"I", TextId::OptionItalic},
                                                     {"S", TextId::OptionUnderlined},
                                                     {"U", TextId::OptionUnderlined},
                                                     {"C", TextId::OptionCentre},
                                                     {"X", TextId::OptionCentreX},
                                                     {"Y", TextId::OptionCentreY},
                                                     {"D", TextId::OptionRight},
                                                     {"H", TextId::OptionTop},
                                                     {"V", TextId::OptionVertical}});
constexpr auto ArcTextLetters = std::to_array<Choices>({{"*", TextId::OptionMultiplier},
                                                        {"G", TextId::OptionBold},
                                                        {"B", TextId::OptionBold},
                                                        {"I", TextId::OptionItalic},
                                                        {"S", TextId::OptionUnderlined},
                                                        {"U", TextId::OptionUnderlined},
                                                        {"X", TextId::OptionCentreX}});
constexpr auto StyleLetters = std::to_array<Choices>({{"*", TextId::OptionMultiplier},
                                                      {"G", TextId::OptionBold},
                                                      {"B", TextId::OptionBold},
                                                      {"I", TextId::OptionItalic},
                                                      {"S", TextId::OptionUnderlined},
                                                      {"U", TextId::OptionUnderlined}});
constexpr auto OrientationLetters = std::to_array<Choices>({{"R", TextId::OptionAngleAdded},
                                                            {"J", TextId::OptionFacesScale},
                                                            {"G", TextId::OptionLeft},
                                                            {"D", TextId::OptionRight},
                                                            {"B", TextId::OptionBaseline},
                                                            {"H", TextId::OptionTop}});
constexpr auto PositionLetters = std::to_array<Choices>({{"C", TextId::OptionCentre},
                                                         {"X", TextId::OptionCentreX},
                                                         {"Y", TextId::OptionCentreY},
                                                         {"D", TextId::OptionRight},
                                                         {"H", TextId::OptionTop}});
constexpr auto Ends =
    std::to_array<Choices>({{"C", TextId::OptionSquareEnds}, {"R", TextId::OptionRoundEnds}});
constexpr auto NotDrawn = std::to_array<Choices>({{"N", TextId::OptionNotDrawn}});
constexpr auto Corners = std::to_array<Choices>({{"D", TextId::OptionCutCorners}});
constexpr auto Pins = std::to_array<Choices>({{"T-", TextId::OptionNoHalfPins}});
constexpr auto PictureForms = std::to_array<Choices>({{"X", TextId::OptionPictureWidth},
                                                      {"Y", TextId::OptionPictureHeight},
                                                      {"Z", TextId::OptionPictureBoth},
                                                      {"A", TextId::OptionPictureFit},
                                                      {"V", TextId::OptionPicturePixels}});
constexpr auto Pages =
    std::to_array<Choices>({{"Portrait", TextId::OptionPortrait}, {"Paysage", TextId::OptionLandscape}});
constexpr auto Shapes = std::to_array<Choices>(
    {{"T", TextId::OptionTriangle}, {"L", TextId::OptionLozenge}, {"P", TextId::OptionDot}});
constexpr auto Steps = std::to_array<Choices>({{"auto", TextId::OptionAuto}});
constexpr auto Notations = std::to_array<Choices>(
    {{"P", TextId::OptionPrefix}, {"E", TextId::OptionExponent}, {"S", TextId::OptionSuperscript}});
constexpr auto Tables =
    std::to_array<Choices>({{"table", TextId::OptionTable}, {"liste", TextId::OptionList}});
constexpr auto Straight = std::to_array<Choices>({{"L", TextId::OptionStraight}});
constexpr auto Logarithmic = std::to_array<Choices>({{"L", TextId::OptionLogarithmic}});

struct ChoiceRow {
  ParameterKind Kind;
  ParameterChoices Choices;
};

constexpr auto ChoiceTable =
    std::to_array<ChoiceRow>({{ParameterKind::TextLetters, {TextLetters, true}},
                              {ParameterKind::ArcTextLetters, {ArcTextLetters, true}},
                              {ParameterKind::FontSize, {StyleLetters, true}},
                              {ParameterKind::Multiplier, {StyleLetters, true}},
                              {ParameterKind::FontChange, {StyleLetters, true}},
                              {ParameterKind::Orientation, {OrientationLetters, true}},
                              {ParameterKind::PicturePosition, {PositionLetters, true}},
                              {ParameterKind::PenEnds, {Ends}},
                              {ParameterKind::ColourOrNone, {NotDrawn}},
                              {ParameterKind::CornerForm, {Corners}},
                              {ParameterKind::DovetailEnds, {Pins}},
                              {ParameterKind::PictureScale, {PictureForms}},
                              {ParameterKind::PictureBox, {PictureForms}},
                              {ParameterKind::PicturePixels, {PictureForms}},
                              {ParameterKind::PageForm, {Pages}},
                              {ParameterKind::ShapeOfMark, {Shapes}},
                              {ParameterKind::Step, {Steps}},
                              {ParameterKind::Notation, {Notations}},
                              {ParameterKind::TableWord, {Tables}},
                              {ParameterKind::ListWord, {Tables}},
                              {ParameterKind::StraightMark, {Straight}},
                              {ParameterKind::LogLetter, {Logarithmic}}});

}  // namespace

ParameterChoices ChoicesOf(ParameterKind kind) {
  for (const ChoiceRow& row : ChoiceTable) {
    if (row.Kind == kind) return row.Choices;
  }
  return {};
}

}  // namespace vaxel
