#include "app/measuring.h"

#include <cmath>
#include <string_view>

#include "base/number_text.h"

namespace vaxel {
namespace {

int DecimalsFor(double perPixel) {
  return perPixel < 0.05 ? 2 : 1;
}

std::string Rounded(double value, int decimals) {
  const double tenths = std::pow(10.0, decimals);
  return NumberText(std::round(value * tenths) / tenths);
}

// With as many digits as a scale can be read.
std::string ValueText(double value, bool isPerCent) {
  constexpr int digits = 4;
  constexpr double nothing = 1e-9;
  if (std::abs(value) < nothing) value = 0;
  if (value != 0 && std::isfinite(value)) {
    const int power = digits - 1 - static_cast<int>(std::floor(std::log10(std::abs(value))));
    const double factor = std::pow(10.0, power);
    value = std::round(value * factor) / factor;
  }
  return NumberText(value) + (isPerCent ? " %" : "");
}

void AddPart(std::string& text, const std::string& part) {
  text += (text.empty() ? "" : ", ") + part;
}

}  // namespace

std::string ReadingText(const AppContext& app, const NearReading& near, double perPixel) {
  const ScaleReading& reading = near.Reading;
  const int decimals = DecimalsFor(perPixel);
  std::string text;
  if (reading.Value)
    AddPart(text, app.Message(TextId::ReadingValue, ValueText(*reading.Value, near.IsPerCent)));
  if (reading.AngleDegrees)
    AddPart(text, app.Message(TextId::ReadingAngle, Rounded(*reading.AngleDegrees, decimals)));
  if (reading.Radius) AddPart(text, app.Message(TextId::ReadingRadius, Rounded(*reading.Radius, decimals)));
  return text;
}

std::string MeasureText(const AppContext& app, Point way, double perPixel) {
  const int decimals = DecimalsFor(perPixel);
  const double distance = std::hypot(way.X, way.Y);
  std::string text = app.Message(TextId::MeasuredDistance, Rounded(distance, decimals));
  if (distance > 0) {
    const double direction = std::atan2(way.Y, way.X) / RadiansPerDegree;
    AddPart(text,
            app.Message(TextId::MeasuredDirection, Rounded(direction < 0 ? direction + 360 : direction, 1)));
  }
  return text;
}

}  // namespace vaxel
