#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "base/number_text.h"
#include "base/text.h"
#include "commands/handlers.h"
#include "commands/point_notation.h"
#include "commands/text_notation.h"
#include "interpreter/script_fault.h"

namespace vaxel {
namespace {

// No font's name is as long; looking one up would take minutes, and every text would carry it.
constexpr std::size_t MaxFontName = 200;
constexpr std::string_view TextLetters = "R#GBISUCXYDHV";
constexpr std::string_view ArcTextLetters = "GBISUX";
constexpr std::string_view StyleLetters = "GBISU";

double PositiveHeight(double value) {
  if (!(value > 0)) throw ScriptFault(FaultReason::BadFontSize, NumberText(value));
  return value;
}

// A font that is not there is told once a run.
void TellOfReplacement(RunContext& run) {
  const std::string used = run.Surface.FontReplacement();
  const std::string& wanted = run.Surface.Font.Name;
  if (used.empty() || !run.ReplacedFonts.insert(UpperCase(wanted)).second) return;
  run.Notice(TextId::FontReplaced, wanted, used);
}

// The options before a command's text, which is that parameter with all that follows. Where commas are
// missing before it the text stands at the place of another parameter.
TextOptions ReadTextCommand(RunContext& run, const Parameters& parameters, std::size_t n,
                            std::string_view letters) {
  if (parameters.Count() >= n) return ReadTextOptions(parameters.Text(n - 1), letters, run.Separators);
  const std::string place = std::to_string(n), commas = std::to_string(n - 1);
  run.Notice(TextId::TextLacks, place, commas);
  return ReadTextOptions(parameters.Text(n - 1), letters, run.Separators);
}

// The first text of a page is preceded by a blank, with which a device takes its font up; then something is
// drawn on the page.
void WriteFirstBlank(RunContext& run, const Font& font, Colour colour) {
  if (run.OrderState < OrderDrawn) {
    const Point point = run.Surface.Current();
    Font plain = font;
    plain.Underline = false;
    WriteText(run.Surface, " ", point, {0, AnchorAlong::Start, AnchorAcross::Top}, plain, colour);
    run.Surface.MoveTo(point);
  }
  run.AddOrder(OrderDrawn);
}

// Upright characters below one another, each centred on the line through the point.
WrittenText WriteVertical(RunContext& run, std::string_view text, Point point, const TextOptions& options,
                          const Font& font, Colour colour) {
  DrawSurface& surface = run.Surface;
  const TextAnchor anchor{options.Rotation.value_or(0), AnchorAlong::Middle, AnchorAcross::Top};
  const TextFrame frame(anchor.Rotation);
  const std::string drawable = DrawableText(text);
  const std::vector<std::string_view> characters = CharactersOf(drawable);
  const TextExtent cell = surface.MeasureText(" ", font);
  const double height = cell.Height() * static_cast<double>(characters.size());
  const double above = options.Along == AnchorAlong::End        ? height
                       : options.Across == AnchorAcross::Middle ? height / 2
                                                                : 0;
  const Point top = point + frame.Up * above;
  Point place = top;
  for (std::string_view character : characters) {
    WriteText(surface, character, place, anchor, font, colour);
    place = place - frame.Up * cell.Height();
  }
  surface.MoveTo(place);
  return {point, top, top - frame.Up * cell.Ascent, cell.Height(), options.Rotation};
}

WrittenText WriteStraight(RunContext& run, std::string_view text, Point point, const TextOptions& options,
                          const Font& font, Colour colour) {
  DrawSurface& surface = run.Surface;
  const AnchorAcross standard = options.Rotation ? AnchorAcross::Baseline : AnchorAcross::Top;
  const TextAnchor anchor{options.Rotation.value_or(0), options.Along, options.Across.value_or(standard)};
  const auto [baseline, extent] = WriteText(surface, text, point, anchor, font, colour);
  const Point toCorner = TextFrame(anchor.Rotation).Up * extent.Ascent;
  // A text that is placed by its corner is gone on with from its upper right one.
  if (!options.Rotation) surface.MoveTo(surface.Current() + toCorner);
  return {point, baseline + toCorner, baseline, extent.Height(), options.Rotation};
}

struct SizeAndStyle {
  std::string_view Size;  // empty when none is given
  std::string_view Letters;
};

// "*k Style", "size Style" or the style alone.
SizeAndStyle SplitStyle(std::string_view text) {
  const std::size_t end = text.find_last_not_of(" GBISUgbisu") + 1;
  return {Trim(text.substr(0, end)), text.substr(end)};
}

void SetSizeAndStyle(RunContext& run, std::string_view text) {
  const SizeAndStyle parts = SplitStyle(text);
  DrawSurface& surface = run.Surface;
  FontSizeRegisters sizes = surface.FontSizes;
  if (parts.Size.starts_with('*')) {
    sizes.Multiplier = PositiveHeight(ReadTextOptions(parts.Size, {}, run.Separators).Multiplier);
  } else if (const auto size = StrictValue(parts.Size, run.Separators)) {
    sizes.Standard = PositiveHeight(*size);
    sizes.Multiplier = 1;
  }
  surface.SetFontSizes(sizes);
  const TextOptions style = ReadTextOptions(parts.Letters, StyleLetters, run.Separators);
  surface.Font.Bold = style.Bold;
  surface.Font.Italic = style.Italic;
  surface.Font.Underline = style.Underline;
}

}  // namespace

void RunPolice(RunContext& run, const Parameters& parameters) {
  FontSizeRegisters sizes = run.Surface.FontSizes;
  sizes.Coefficient = PositiveHeight(parameters.NumberOr(2, 1));
  const std::string name = DrawableText(Shorten(parameters.Trimmed(1), MaxFontName));
  if (!name.empty()) run.Surface.Font.Name = name;
  run.Surface.SetFontSizes(sizes);
  TellOfReplacement(run);
}

void RunTailleP(RunContext& run, const Parameters& parameters) {
  const std::string first = WithPlainBlanks(run.Substitute(parameters.Text(1)));
  if (!Trim(first).empty()) SetSizeAndStyle(run, first);
  if (parameters.Count() < 2) return;
  const bool literal = IsLiteral(parameters.Text(2));
  const std::string text = literal ? std::string(parameters.Text(2)) : run.Substitute(parameters.Text(2));
  const TextExtent extent = run.Surface.MeasureText(TextOf(text), run.Surface.Font);
  const auto store = [&](std::size_t n, double value) {
    if (!parameters.Trimmed(n).empty()) run.SetVariable(parameters.Trimmed(n), CoordinateText(value));
  };
  store(3, extent.Length);
  store(4, extent.Height());
}

void RunTexte(RunContext& run, const Parameters& parameters) {
  TextOptions options = ReadTextCommand(run, parameters, 5, TextLetters);
  const Colour colour = run.ColourOr(parameters.Text(3));
  const std::string_view text = TextOf(parameters.Rest(5));
  const Font font = FontWith(run.Surface.Font, options);
  WriteFirstBlank(run, font, colour);

  Point point;
  if (options.NextLine && run.LastText) {
    if (!options.Rotation) options.Rotation = run.LastText->Rotation;
    point = NextLinePoint(*run.LastText, options.Rotation.has_value(), options.Along != AnchorAlong::Start,
                          options.Across.has_value()) +
            ReadPoint(parameters, 1, {}, EmptyCoordinate::Reference);
  } else {
    point = ReadPlace(run, parameters, 1);
  }
  const auto write = options.Vertical ? WriteVertical : WriteStraight;
  run.LastText = write(run, text, point, options, font, colour);
}

void RunTexteC(RunContext& run, const Parameters& parameters) {
  const TextOptions options = ReadTextCommand(run, parameters, 7, ArcTextLetters);
  DrawSurface& surface = run.Surface;
  const Font font = FontWith(surface.Font, options);
  const Point centre = ReadPlace(run, parameters, 1);
  const double radius = parameters.RequiredNumber(3);
  const double angle = parameters.RequiredNumber(4);
  if (radius == 0) throw ScriptFault(FaultReason::DivisionByZero);
  const Colour colour = run.ColourOr(parameters.Text(5));
  const std::string text = DrawableText(TextOf(parameters.Rest(7)));

  const std::vector<std::string_view> characters = CharactersOf(text);
  std::vector<double> widths;
  for (std::string_view character : characters) widths.push_back(surface.MeasureText(character, font).Length);
  const std::vector<CirclePlace> places =
      PlacesOnCircle(radius, angle, options.Along == AnchorAlong::Middle, widths);
  for (std::size_t i = 0; i < places.size(); ++i) {
    const TextAnchor anchor{places[i].Rotation, AnchorAlong::Middle, AnchorAcross::Baseline};
    WriteText(surface, characters[i], centre + places[i].Middle, anchor, font, colour);
  }
  surface.MoveTo(centre);
}

}  // namespace vaxel
