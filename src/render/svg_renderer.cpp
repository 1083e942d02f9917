#include "render/svg_renderer.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "base/units.h"
#include "drawing/standard_faces.h"
#include "render/decimal_text.h"

namespace vaxel {
namespace {

constexpr int SvgDecimals = 4;
constexpr std::size_t SvgFlushSize = 1U << 16;
// Millimetres that these decimals write as 0: a box or a circle without a width is not drawn, a line is.
constexpr double LeastSize = 0.00005;

void AppendEscaped(std::string& text, std::string_view content) {
  for (char c : content) {
    switch (c) {
      case '&':
        text += "&amp;";
        break;
      case '<':
        text += "&lt;";
        break;
      case '>':
        text += "&gt;";
        break;
      case '"':
        text += "&quot;";
        break;
      default:
        text += c;
    }
  }
}

// As a string of CSS inside an attribute of XML.
void AppendQuoted(std::string& text, std::string_view name) {
  std::string quoted = "'";
  for (char c : name) {
    if (c == '\'' || c == '\\') quoted += '\\';
    quoted += c;
  }
  AppendEscaped(text, quoted += '\'');
}

// The family, and for a reader that has not got it those of the same widths.
void AppendFamilies(std::string& text, std::string_view name) {
  AppendQuoted(text, name);
  const StandardFamily* standard = FindStandardFamily(name);
  if (standard) {
    for (std::string_view same : standard->SameWidths) {
      text += ',';
      if (same.find(' ') == std::string_view::npos) {
        text += same;
      } else {
        AppendQuoted(text, same);
      }
    }
  }
  (text += ',') += standard ? standard->Generic : "sans-serif";
}

// Bytes in each piece of a picture, a multiple of 3, so that the pieces join.
constexpr std::size_t Base64Stretch = 3U << 13;

void AppendBase64(std::string& text, std::string_view bytes) {
  constexpr std::string_view digits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  for (; !bytes.empty(); bytes.remove_prefix(std::min<std::size_t>(3, bytes.size()))) {
    std::uint32_t group = 0;
    for (std::size_t i = 0; i < 3; ++i) {
      group = group << 8 | (i < bytes.size() ? static_cast<unsigned char>(bytes[i]) : 0U);
    }
    for (std::size_t i = 0; i < 4; ++i) {
      text += i <= bytes.size() ? digits[group >> (18 - 6 * i) & 63] : '=';
    }
  }
}

// Blanks that a reader would drop: at the ends, and beside one another.
bool HasBlanksToKeep(std::string_view text) {
  return text.starts_with(' ') || text.ends_with(' ') || text.find("  ") != std::string_view::npos;
}

}  // namespace

void SvgRenderer::Number(double value) {
  AppendShort(text_, value, SvgDecimals);
}

void SvgRenderer::Attribute(const char* name, double value) {
  ((text_ += ' ') += name) += "=\"";
  Number(value);
  text_ += '"';
}

void SvgRenderer::XY(Point point) {
  Number(point.X);
  text_ += ' ';
  Number(point.Y);
}

void SvgRenderer::Flush() {
  sink_.Write(text_);
  text_.clear();
}

void SvgRenderer::BeginPage(const Page& page, std::size_t) {
  text_ += "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"";
  Number(page.Width);
  text_ += "mm\" height=\"";
  Number(page.Height);
  text_ += "mm\" viewBox=\"0 0 ";
  Number(page.Width);
  text_ += ' ';
  Number(page.Height);
  text_ += "\" fill=\"none\" stroke-linecap=\"round\" stroke-linejoin=\"round\"";
  // Text is set as it was measured: outlines as designed, no kerning, no ligatures.
  text_ += " text-rendering=\"geometricPrecision\" style=\"font-kerning:none;font-variant-ligatures:none;";
  text_ += "font-feature-settings:'kern' 0,'liga' 0\">\n";
  isMirrored_ = page.IsMirrored;
  if (!isMirrored_) return;
  text_ += "<g transform=\"matrix(-1 0 0 1 ";
  Number(page.Width);
  text_ += " 0)\">\n";
}

void SvgRenderer::EndPage() {
  if (isMirrored_) text_ += "</g>\n";
  text_ += "</svg>\n";
  Flush();
}

void SvgRenderer::Finish(const Operation& operation, const Fill& inside) {
  if (inside.Solid) {
    text_ += " fill=\"";
    AppendColour(text_, inside.Ink);
    text_ += '"';
  }
  if (operation.Width > 0) {
    text_ += " stroke=\"";
    AppendColour(text_, operation.Ink);
    text_ += '"';
    Attribute("stroke-width", operation.Width);
  }
  text_ += " data-line=\"";
  AppendFixed(text_, operation.SourceLine, 0);
  text_ += "\"/>\n";
  if (text_.size() >= SvgFlushSize) Flush();
}

void SvgRenderer::Line(const Operation& operation, const LineShape& line) {
  text_ += "<line";
  Attribute("x1", line.From.X);
  Attribute("y1", line.From.Y);
  Attribute("x2", line.To.X);
  Attribute("y2", line.To.Y);
  Finish(operation, {});
}

void SvgRenderer::Rectangle(const Operation& operation, const RectangleShape& rectangle) {
  const Point size = rectangle.Opposite - rectangle.Corner;
  if (std::abs(size.X) < LeastSize || std::abs(size.Y) < LeastSize) {
    Line(operation, {rectangle.Corner, rectangle.Opposite});
    return;
  }
  text_ += "<rect";
  Attribute("x", std::min(rectangle.Corner.X, rectangle.Opposite.X));
  Attribute("y", std::min(rectangle.Corner.Y, rectangle.Opposite.Y));
  Attribute("width", std::abs(size.X));
  Attribute("height", std::abs(size.Y));
  Finish(operation, rectangle.Inside);
}

void SvgRenderer::Polygon(const Operation& operation, const PolygonShape& polygon,
                          std::span<const Point> corners) {
  text_ += "<polygon points=\"";
  for (const Point& corner : corners) {
    if (text_.back() != '"') text_ += ' ';
    Number(corner.X);
    text_ += ',';
    Number(corner.Y);
  }
  text_ += '"';
  Finish(WithExactWidth(operation, polygon), polygon.Inside);
}

// Two halves, by the middle: the ends of an arc of nearly a whole turn are the same point when rounded, and
// an arc between equal points is none.
void SvgRenderer::Arc(double radiusX, double radiusY, bool clockwise, Point middle, Point to) {
  for (const Point end : {middle, to}) {
    text_ += " A";
    Number(radiusX);
    text_ += ' ';
    Number(radiusY);
    text_ += clockwise ? " 0 0 1 " : " 0 0 0 ";
    XY(end);
  }
}

void SvgRenderer::Contour(const Operation& operation, const ContourShape& contour,
                          std::span<const ContourArc> pieces) {
  text_ += "<path d=\"M";
  for (const ContourArc& piece : pieces) {
    if (text_.back() != 'M') text_ += " L";
    XY(PointOnArc(piece, piece.StartAngle));
    if (piece.Radius == 0 || piece.Sweep == 0) continue;
    Arc(piece.Radius, piece.Radius, piece.Sweep < 0, PointOnArc(piece, piece.StartAngle + piece.Sweep / 2),
        PointOnArc(piece, piece.StartAngle + piece.Sweep));
  }
  text_ += " Z\"";
  Finish(operation, contour.Inside);
}

void SvgRenderer::Circle(const Operation& operation, const CircleShape& circle) {
  if (circle.RadiusX < LeastSize || circle.RadiusY < LeastSize) {
    const Point reach = {circle.RadiusX, circle.RadiusY};
    Line(operation, {circle.Centre - reach, circle.Centre + reach});
    return;
  }
  if (circle.Form == CircleForm::Full) {
    const bool round = circle.RadiusX == circle.RadiusY;
    text_ += round ? "<circle" : "<ellipse";
    Attribute("cx", circle.Centre.X);
    Attribute("cy", circle.Centre.Y);
    Attribute(round ? "r" : "rx", circle.RadiusX);
    if (!round) Attribute("ry", circle.RadiusY);
    Finish(operation, circle.Inside);
    return;
  }
  const Point from = PointOnCircle(circle, circle.StartAngle);
  text_ += "<path d=\"M";
  if (circle.Form == CircleForm::Pie) {
    XY(circle.Centre);
    text_ += " L";
  }
  XY(from);
  Arc(circle.RadiusX, circle.RadiusY, false, PointOnCircle(circle, (circle.StartAngle + circle.EndAngle) / 2),
      PointOnCircle(circle, circle.EndAngle));
  if (circle.Form == CircleForm::Pie) text_ += " Z";
  text_ += '"';
  // Round joins would reach over the ends of an arc that is shorter than it is wide.
  if (circle.Butt) text_ += " stroke-linecap=\"butt\" stroke-linejoin=\"bevel\"";
  Finish(operation, circle.Inside);
}

void SvgRenderer::Text(const Operation& operation, const TextShape& shape, std::string_view text,
                       const FontFace& face) {
  text_ += "<text";
  Attribute("x", shape.Start.X);
  Attribute("y", shape.Start.Y);
  if (shape.Angle != 0) {
    text_ += " transform=\"rotate(";
    Number(-shape.Angle * DegreesPerRadian);
    text_ += ' ';
    Number(shape.Start.X);
    text_ += ' ';
    Number(shape.Start.Y);
    text_ += ")\"";
  }
  text_ += " font-family=\"";
  AppendFamilies(text_, face.Name);
  text_ += '"';
  if (face.Bold) text_ += " font-weight=\"bold\"";
  if (face.Italic) text_ += " font-style=\"italic\"";
  Attribute("font-size", shape.Size);
  if (shape.Length > 0) {
    Attribute("textLength", shape.Length);
    text_ += " lengthAdjust=\"spacingAndGlyphs\"";
  }
  // Browsers do not let a text inherit this.
  if (HasBlanksToKeep(text)) text_ += " xml:space=\"preserve\"";
  text_ += " fill=\"";
  AppendColour(text_, operation.Ink);
  text_ += "\" data-line=\"";
  AppendFixed(text_, operation.SourceLine, 0);
  text_ += "\">";
  AppendEscaped(text_, text);
  text_ += "</text>\n";
  if (text_.size() >= SvgFlushSize) Flush();
}

void SvgRenderer::Image(const Operation& operation, const PictureShape& shape, const Picture& picture) {
  text_ += "<image";
  Attribute("x", shape.Corner.X);
  Attribute("y", shape.Corner.Y);
  Attribute("width", shape.Width);
  Attribute("height", shape.Height);
  // Browsers would turn a photograph as its camera says.
  text_ +=
      " preserveAspectRatio=\"none\" style=\"image-orientation:none\""
      " xmlns:xlink=\"http://www.w3.org/1999/xlink\" data-line=\"";
  AppendFixed(text_, operation.SourceLine, 0);
  ((text_ += "\" xlink:href=\"data:") += MediaType(picture.Format)) += ";base64,";
  for (std::string_view rest = picture.Bytes; !rest.empty();) {
    const std::size_t length = std::min(rest.size(), Base64Stretch);
    AppendBase64(text_, rest.substr(0, length));
    rest.remove_prefix(length);
    if (text_.size() >= SvgFlushSize) Flush();
  }
  text_ += "\"/>\n";
}

}  // namespace vaxel
