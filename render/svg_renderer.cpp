#include "render/svg_renderer.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "drawing/standard_faces.h"
#include "render/decimal_text.h"

namespace vaxel {
namespace {

constexpr int Decimals = 4;
constexpr std::size_t FlushSize = 1U << 16;
constexpr double DegreesPerRadian = 180 / std::numbers::pi;

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

// Blanks that a reader would drop: at the ends, and beside one another.
bool HasBlanksToKeep(std::string_view text) {
  return text.starts_with(' ') || text.ends_with(' ') || text.find("  ") != std::string_view::npos;
}

}  // namespace

void SvgRenderer::Number(double value) {
  AppendShort(text_, value, Decimals);
}

void SvgRenderer::Attribute(const char* name, double value) {
  ((text_ += ' ') += name) += "=\"";
  Number(value);
  text_ += '"';
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
}

void SvgRenderer::EndPage() {
  text_ += "</svg>\n";
  Flush();
}

void SvgRenderer::Finish(const Operation& operation, const Fill& inside) {
  if (inside.Solid) {
    text_ += " fill=\"";
    AppendColour(text_, inside.Ink);
    text_ += '"';
  }
  text_ += " stroke=\"";
  AppendColour(text_, operation.Ink);
  text_ += '"';
  Attribute("stroke-width", operation.Width);
  text_ += " data-line=\"";
  AppendFixed(text_, operation.SourceLine, 0);
  text_ += "\"/>\n";
  if (text_.size() >= FlushSize) Flush();
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
  text_ += "<rect";
  Attribute("x", std::min(rectangle.Corner.X, rectangle.Opposite.X));
  Attribute("y", std::min(rectangle.Corner.Y, rectangle.Opposite.Y));
  Attribute("width", std::abs(rectangle.Opposite.X - rectangle.Corner.X));
  Attribute("height", std::abs(rectangle.Opposite.Y - rectangle.Corner.Y));
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
  Finish(operation, polygon.Inside);
}

// Two halves: the ends of an arc of nearly a whole turn are the same point when rounded, and an arc between
// equal points is none.
void SvgRenderer::Arc(const CircleShape& circle) {
  const double middle = (circle.StartAngle + circle.EndAngle) / 2;
  for (double angle : {middle, circle.EndAngle}) {
    const Point to = PointOnCircle(circle, angle);
    text_ += " A";
    Number(circle.RadiusX);
    text_ += ' ';
    Number(circle.RadiusY);
    text_ += " 0 0 0 ";
    Number(to.X);
    text_ += ' ';
    Number(to.Y);
  }
}

void SvgRenderer::Circle(const Operation& operation, const CircleShape& circle) {
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
    Number(circle.Centre.X);
    text_ += ' ';
    Number(circle.Centre.Y);
    text_ += " L";
  }
  Number(from.X);
  text_ += ' ';
  Number(from.Y);
  Arc(circle);
  if (circle.Form == CircleForm::Pie) text_ += " Z";
  text_ += '"';
  Finish(operation, circle.Inside);
}

void SvgRenderer::Dot(const Operation& operation, const PointShape& point) {
  // A line without length and with round ends is drawn as a dot.
  Line(operation, {point.At, point.At});
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
  if (text_.size() >= FlushSize) Flush();
}

}  // namespace vaxel
