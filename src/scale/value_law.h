// The laws of scales that have values of their own: which place on the support a value has, and which value
// stands at a place. Pure arithmetic: a law that a script writes comes in as a function, a table as points.
//
// A reading is what a law gives for a value: a fraction of the support, 0 at its start and 1 at its end, or,
// of a direct law, what a script writes with "°": the scale angle in degrees, on a line millimetres from the
// pivot.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <vector>

namespace vaxel {

class ValueLaw {
 public:
  virtual ~ValueLaw() = default;

  virtual bool IsDirect() const { return false; }
  // A value beyond the law's range is taken as the end of it; a value may be infinite where that end is.
  virtual double ReadingOf(double value) const = 0;
  // The inverse; likewise.
  virtual double ValueOf(double reading) const = 0;
};

// A law gives the place of a value in per cent of the support, a finite one; where there is none it throws.
// It is asked for finite values only.
using PlaceFunction = std::function<double(double value)>;

// A law that a function gives between two values, of which one or both may be infinite.
class FunctionLaw : public ValueLaw {
 public:
  // The function must be one in which FindLawFault found none.
  FunctionLaw(PlaceFunction placeOf, double first, double last);

  double ReadingOf(double value) const override;
  double ValueOf(double reading) const override;

 private:
  double At(double value) const { return placeOf_(value) / 100; }

  PlaceFunction placeOf_;
  double low_, high_;  // the range, of which infinite ends are where the limits are taken
  bool lowIsInfinite_, highIsInfinite_;
};

// Why a function is no law.
struct LawFault {
  enum class Kind : std::uint8_t {
    None,
    Turns,   // it goes on in the other direction from At
    Stands,  // all values lie in one place
    NoLimit  // toward the infinite value At it comes to no end
  };
  Kind What = Kind::None;
  double At = 0;
};

// Tries a function at 1,000 places from first to last: equal steps of the value or, toward an infinite end,
// distances from the other one that grow by equal factors. A limit is taken where the results for 1E9 and
// 1E12 agree to 0.0001 %.
LawFault FindLawFault(const PlaceFunction& placeOf, double first, double last);

struct LawPoint {
  double Value = 0, Reading = 0;
};

// A law through measured points, between which it is straight or smooth.
//
// The smooth one is the monotone piecewise cubic Hermite interpolation with Fritsch-Butland slopes (the
// weighted harmonic mean of the slopes on both sides) and three-point slopes at the ends, which SciPy and
// MATLAB call PCHIP: it passes through every point, never turns between two of them, as a spline may, and
// whoever checks a dial finds the same numbers there.
class TableLaw : public ValueLaw {
 public:
  // At least two points, of which values and readings rise or fall strictly.
  TableLaw(std::vector<LawPoint> points, bool isDirect, bool isStraight);

  bool IsDirect() const override { return isDirect_; }
  double ReadingOf(double value) const override;
  double ValueOf(double reading) const override;

 private:
  double Between(std::size_t left, double value) const;

  std::vector<LawPoint> points_;  // values ascend
  std::vector<double> slopes_;    // at the points; none: straight
  bool isDirect_;
};

// The index of the first point at which values or readings do not go on as strictly as they began; the number
// of points when there is none.
std::size_t FirstUnordered(const std::vector<LawPoint>& points);

}  // namespace vaxel
