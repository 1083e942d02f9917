#include "interpreter/arithmetic.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

#include "base/point.h"
#include "base/text.h"
#include "interpreter/script_fault.h"

namespace vaxel {
namespace {

double DecimalLogarithm(double x) {
  if (x <= 0) throw ScriptFault(FaultReason::Domain);
  // In double precision the quotient for 1000 falls just short of 3.
  return static_cast<double>(std::log(static_cast<long double>(x)) / std::log(10.0L));
}

double NaturalLogarithm(double x) {
  if (x <= 0) throw ScriptFault(FaultReason::Domain);
  return std::log(x);
}

double Sign(double x) {
  return x > 0 ? 1 : x < 0 ? -1 : 0;
}

struct Function {
  std::string_view Name;
  double (*Value)(double);
};

constexpr std::array<Function, 16> Functions = {{
    {"SIN", [](double x) { return std::sin(x * RadiansPerDegree); }},
    {"COS", [](double x) { return std::cos(x * RadiansPerDegree); }},
    {"TAN", [](double x) { return std::tan(x * RadiansPerDegree); }},
    {"ASIN", [](double x) { return std::asin(x) / RadiansPerDegree; }},
    {"ACOS", [](double x) { return std::acos(x) / RadiansPerDegree; }},
    {"ATAN", [](double x) { return std::atan(x) / RadiansPerDegree; }},
    {"SINH", [](double x) { return (std::exp(x) - std::exp(-x)) / 2; }},
    {"COSH", [](double x) { return (std::exp(x) + std::exp(-x)) / 2; }},
    {"LOG", DecimalLogarithm},
    {"SQR", [](double x) { return std::sqrt(x); }},
    {"ABS", [](double x) { return std::abs(x); }},
    {"SGN", Sign},
    {"FIX", [](double x) { return std::trunc(x); }},
    {"EXP", [](double x) { return std::exp(x); }},
    {"LN", NaturalLogarithm},
    {"INT", [](double x) { return std::floor(x); }},
}};

}  // namespace

double Remainder(double left, double right) {
  if (right == 0) FailDivision();
  return std::fmod(left, right);
}

double Power(double left, double right) {
  if (left == 0 && right < 0) FailDivision();
  return std::pow(left, right);
}

void FailDivision() {
  throw ScriptFault(FaultReason::DivisionByZero);
}

double RoundToDecimals(double x, int decimals) {
  static constexpr std::array<double, 10> powers = {1, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9};
  const double scale = powers[static_cast<std::size_t>(decimals)];
  const double scaled = x * scale;
  if (std::abs(scaled) >= 1e15) return x;
  // 1.005 as a double lies just below the half that the user wrote.
  constexpr double nudge = 2 * std::numeric_limits<double>::epsilon();
  return std::round(scaled * (1 + nudge)) / scale;
}

std::optional<std::uint8_t> FindFunction(std::string_view name) {
  const auto* found = std::find_if(Functions.begin(), Functions.end(), [&](const Function& known) {
    return EqualIgnoringCase(known.Name, name);
  });
  if (found == Functions.end()) return std::nullopt;
  return static_cast<std::uint8_t>(found - Functions.begin());
}

double CallFunction(std::uint8_t function, double argument) {
  return RequireFinite(Functions[function].Value(argument));
}

}  // namespace vaxel
