#include "app/problem_list.h"

#include <gtest/gtest.h>

namespace vaxel::test {
namespace {

Problem Notice(std::uint32_t line, std::string message = "n") {
  return {Problem::Kind::Notice, std::move(message), "a.dat", line, line};
}

TEST(ProblemList, GoesFromLineToLine) {
  ProblemList list;
  EXPECT_FALSE(list.After(1));
  EXPECT_FALSE(list.Before(1));
  Problem included = Notice(40, "included");
  included.EditorLine = 5;
  list.Replace(
      {Notice(9), Notice(3), Notice(3), included, {Problem::Kind::Error, "e", "a.dat", 9, 9}, Notice(0)});
  ASSERT_EQ(list.All().size(), 5U);  // one was said twice
  EXPECT_EQ(list.All()[3].What, Problem::Kind::Error);
  const auto lineOf = [&](std::optional<std::size_t> place) { return list.All()[*place].EditorLine; };
  EXPECT_EQ(lineOf(list.After(1)), 3U);
  EXPECT_EQ(lineOf(list.After(3)), 5U);
  EXPECT_EQ(list.All()[*list.After(3)].Line, 40U);
  EXPECT_EQ(lineOf(list.After(9)), 3U);
  EXPECT_EQ(lineOf(list.Before(9)), 5U);
  EXPECT_EQ(lineOf(list.Before(3)), 9U);
  EXPECT_EQ(list.InLine(9), 3U);
  EXPECT_FALSE(list.InLine(4));
  EXPECT_FALSE(list.InLine(0));
  list.Replace({Notice(0)});
  EXPECT_FALSE(list.After(1));
  EXPECT_FALSE(list.Before(1));
}

TEST(ProblemList, KeepsTheErrorAmongManyNotices) {
  std::vector<Problem> many;
  for (std::uint32_t i = 1; i <= 3000; ++i) many.push_back(Notice(i));
  many.push_back({Problem::Kind::Error, "e", "", 2999, 2999});
  ProblemList list;
  list.Replace(many);
  EXPECT_EQ(list.All().size(), ProblemList::Most);
  EXPECT_EQ(list.All()[*list.InLine(2999)].Message, "e");
}

}  // namespace
}  // namespace vaxel::test
