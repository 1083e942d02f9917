#include "render/paper_choice.h"

#include <gtest/gtest.h>

#include <array>
#include <vector>

namespace vaxel {
namespace {

constexpr Paper A4{9, 209.9, 297}, A3{8, 297, 419.9}, A5{11, 148, 210}, Letter{1, 215.9, 279.4};

struct PaperCase {
  const char* Name;
  Paper Own;
  std::vector<Point> Pages;
  int Kind;  // 0: none
};

TEST(PaperChoice, SuitsThePages) {
  const PaperCase cases[] = {
      {"the printer's own for a small drawing", A4, {{60, 40}}, 9},
      {"the sheet's own size, although a larger one is set", A3, {{210, 297}}, 9},
      {"of sheets that are turned, too", Letter, {{297, 210}, {210, 297}}, 9},
      {"the smallest where the printer's own is too small", A5, {{200, 250}}, 1},
      {"turned alone", A4, {{280, 200}}, 9},
      {"for the largest of several pages", A4, {{60, 40}, {100, 400}}, 8},
      {"a printer that is set to no paper that it knows", {}, {{60, 40}}, 11},
      {"no paper", A4, {{60, 500}}, 0},
  };
  for (const PaperCase& c : cases) {
    DisplayList list;
    for (const Point& size : c.Pages) list.BeginPage(size.X, size.Y);
    const auto paper = ChoosePaper(std::array{A3, A4, Letter, A5}, c.Own, list);
    EXPECT_EQ(paper ? paper->Kind : 0, c.Kind) << c.Name;
  }
}

}  // namespace
}  // namespace vaxel
