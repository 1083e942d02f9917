#include "render/paper_choice.h"

#include <algorithm>
#include <cmath>

namespace vaxel {
namespace {

bool IsOfSize(const Page& page, double width, double height) {
  return std::abs(page.Width - width) <= PaperTolerance && std::abs(page.Height - height) <= PaperTolerance;
}

bool IsOfSize(const Page& page, const Paper& paper) {
  return IsOfSize(page, paper.Width, paper.Height) || IsOfSize(page, paper.Height, paper.Width);
}

}  // namespace

bool FitsUpright(const Page& page, const Paper& paper) {
  return page.Width <= paper.Width + PaperTolerance && page.Height <= paper.Height + PaperTolerance;
}

bool Fits(const Page& page, const Paper& paper) {
  return FitsUpright(page, paper) || FitsUpright(page, {paper.Kind, paper.Height, paper.Width});
}

std::optional<Paper> ChoosePaper(std::span<const Paper> papers, const Paper& own, const DisplayList& list) {
  const auto all = [&](const auto& holds, const Paper& paper) {
    return std::ranges::all_of(list.Pages(), [&](const Page& page) { return holds(page, paper); });
  };
  const auto hasJustTheirSize = [](const Page& page, const Paper& paper) { return IsOfSize(page, paper); };
  const auto holds = [](const Page& page, const Paper& paper) { return Fits(page, paper); };
  if (all(hasJustTheirSize, own)) return own;
  for (const Paper& paper : papers) {
    if (all(hasJustTheirSize, paper)) return paper;
  }
  if (all(holds, own)) return own;
  std::optional<Paper> smallest;
  for (const Paper& paper : papers) {
    const bool isSmaller = !smallest || paper.Width * paper.Height < smallest->Width * smallest->Height;
    if (isSmaller && all(holds, paper)) smallest = paper;
  }
  return smallest;
}

}  // namespace vaxel
