#include "app/line_map.h"

#include <algorithm>
#include <functional>
#include <unordered_map>

namespace vaxel {
namespace {

constexpr std::size_t NoLine = static_cast<std::size_t>(-1);

using Marks = std::vector<std::size_t>;

// Sets where the lines stand that are in both texts once. Where they have changed their order, those count
// that go on downward.
void MatchSingleLines(const Marks& drawn, const Marks& now, std::size_t begin, std::size_t drawnEnd,
                      std::size_t nowEnd, Marks& inText) {
  struct Seen {
    std::size_t InDrawn = 0, InNow = 0, Place = 0;
  };
  std::unordered_map<std::size_t, Seen> seen;
  for (std::size_t i = begin; i < drawnEnd; ++i) ++seen[drawn[i]].InDrawn;
  for (std::size_t i = begin; i < nowEnd; ++i) {
    Seen& line = seen[now[i]];
    ++line.InNow;
    line.Place = i;
  }
  std::size_t least = begin;
  for (std::size_t i = begin; i < drawnEnd; ++i) {
    const Seen& line = seen[drawn[i]];
    if (line.InDrawn != 1 || line.InNow != 1 || line.Place < least) continue;
    inText[i] = line.Place;
    least = line.Place + 1;
  }
}

// Between two lines that are known the others follow in their order: as many as are equal from either side,
// and all of them where there are as many as before.
void FillGap(const Marks& drawn, const Marks& now, std::size_t from, std::size_t to, std::size_t nowFrom,
             std::size_t nowTo, Marks& inText) {
  if (to - from == nowTo - nowFrom) {
    for (std::size_t i = from; i < to; ++i) inText[i] = nowFrom + i - from;
    return;
  }
  while (from < to && nowFrom < nowTo && drawn[from] == now[nowFrom]) inText[from++] = nowFrom++;
  while (from < to && nowFrom < nowTo && drawn[to - 1] == now[nowTo - 1]) inText[--to] = --nowTo;
}

}  // namespace

std::vector<std::size_t> LineMarks(std::string_view text) {
  std::vector<std::size_t> marks;
  for (std::size_t begin = 0; begin <= text.size();) {
    const std::size_t end = std::min(text.find('\n', begin), text.size());
    marks.push_back(std::hash<std::string_view>{}(text.substr(begin, end - begin)));
    begin = end + 1;
  }
  return marks;
}

LineMap::LineMap(const Marks& drawn, const Marks& now) : isSame_(drawn == now) {
  if (isSame_) return;
  const auto [drawnAt, nowAt] = std::mismatch(drawn.begin(), drawn.end(), now.begin(), now.end());
  const auto begin = static_cast<std::size_t>(drawnAt - drawn.begin());
  std::size_t drawnEnd = drawn.size(), nowEnd = now.size();
  while (drawnEnd > begin && nowEnd > begin && drawn[drawnEnd - 1] == now[nowEnd - 1]) --drawnEnd, --nowEnd;
  inText_.assign(drawn.size(), NoLine);
  for (std::size_t i = 0; i < begin; ++i) inText_[i] = i;
  for (std::size_t i = drawnEnd; i < drawn.size(); ++i) inText_[i] = i - drawnEnd + nowEnd;
  MatchSingleLines(drawn, now, begin, drawnEnd, nowEnd, inText_);
  for (std::size_t i = begin, nowFrom = begin; i < drawnEnd;) {
    std::size_t to = i;
    while (to < drawnEnd && inText_[to] == NoLine) ++to;
    FillGap(drawn, now, i, to, nowFrom, to < drawnEnd ? inText_[to] : nowEnd, inText_);
    nowFrom = to < drawnEnd ? inText_[to] + 1 : nowEnd;
    i = to + 1;
  }
  inDrawing_.assign(now.size(), NoLine);
  for (std::size_t i = 0; i < inText_.size(); ++i) {
    if (inText_[i] != NoLine) inDrawing_[inText_[i]] = i;
  }
}

std::optional<std::size_t> LineMap::InText(std::size_t drawnLine) const {
  if (isSame_) return drawnLine;
  if (drawnLine == 0 || drawnLine > inText_.size() || inText_[drawnLine - 1] == NoLine) return std::nullopt;
  return inText_[drawnLine - 1] + 1;
}

std::optional<std::size_t> LineMap::InDrawing(std::size_t line) const {
  if (isSame_) return line;
  if (line == 0 || line > inDrawing_.size() || inDrawing_[line - 1] == NoLine) return std::nullopt;
  return inDrawing_[line - 1] + 1;
}

}  // namespace vaxel
