// The limits of a display list, which bound the memory of a run.
#include "drawing/display_list.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "base/contour.h"
#include "drawing/drawing_fault.h"
#include "drawing/font_face.h"
#include "drawing/picture.h"

namespace vaxel {
namespace {

template <class Adding>
DrawingFault::Reason ReasonOf(Adding add) {
  try {
    add();
  } catch (const DrawingFault& fault) {
    return fault.Why;
  }
  ADD_FAILURE() << "there is room for it";
  return {};
}

// A list that is drawn anew has all of its room again.
TEST(DisplayList, HoldsTextsAndPicturesUpToItsLimits) {
  DisplayList list;
  list.BeginPage(100, 100);
  std::string half;
  half.resize(DisplayList::MaxTextBytes / 2, 'x');
  const auto picture = std::make_shared<Picture>();
  picture->Bytes.resize(DisplayList::MaxPictureBytes / 2);
  for (int drawing = 0; drawing < 2; ++drawing) {
    list.AddText(half, {}, {}, {});
    EXPECT_FALSE(list.HasRoomForPages());
    list.AddText(half, {}, {}, {});
    EXPECT_EQ(ReasonOf([&] { list.AddText("x", {}, {}, {}); }), DrawingFault::Reason::TooMuchText);
    list.AddPicture(picture, {}, {});
    list.AddPicture(picture, {}, {});
    EXPECT_EQ(ReasonOf([&] { list.AddPicture(picture, {}, {}); }), DrawingFault::Reason::TooManyPictures);
    list.Clear();
    EXPECT_EQ(list.Size(), 0U);
    EXPECT_TRUE(list.HasRoomForPages());
    list.AddPicture(picture, {}, {});
    EXPECT_FALSE(list.HasRoomForPages());
    list.Clear();
    for (std::size_t i = 0; i < DisplayList::MaxOperations / 10; ++i) list.Add({});
    EXPECT_FALSE(list.HasRoomForPages());
    list.Clear();
  }
}

// Corners count for memory too: as many as four operations' for each operation, in large figures as in small.
TEST(DisplayList, HoldsCornersUpToItsLimits) {
  DisplayList list;
  list.BeginPage(100, 100);
  constexpr std::size_t most = 4 * DisplayList::MaxOperations;
  const std::vector<Point> corners(most / 2);
  list.AddPolygon(corners, {}, {});
  list.AddPolygon(corners, {}, {});
  EXPECT_EQ(ReasonOf([&] { list.AddPolygon(std::vector<Point>(1), {}, {}); }),
            DrawingFault::Reason::TooManyOperations);
}

// Whatever is added counts, and pictures with the pixels that an output will decode.
TEST(DisplayList, TakesNoMoreMemoryThanItsRoom) {
  const auto picture = std::make_shared<Picture>();
  picture->Width = picture->Height = 100;
  const auto draw = [&](DisplayList& list, int what) {
    const FontFace face;
    switch (what) {
      case 0:
        return list.Add({});
      case 1:
        return list.AddText("a text", face, {}, {});
      case 2:
        return list.AddPolygon(std::vector<Point>(10), {}, {});
      case 3:
        return list.AddContour(std::vector<ContourArc>(10), {}, {});
      case 4:
        return list.BeginPage(1, 1);
      default:
        return list.AddPicture(std::make_shared<Picture>(*picture), {}, {});
    }
  };
  constexpr std::size_t room = 100'000;
  for (int what = 0; what < 6; ++what) {
    DisplayList list(room);
    list.BeginPage(100, 100);
    int drawn = 0;
    const auto reason = ReasonOf([&] {
      for (; drawn < 10'000; ++drawn) draw(list, what);
    });
    EXPECT_EQ(reason, DrawingFault::Reason::TooMuchDrawn) << what;
    EXPECT_LE(list.Bytes() + list.DecodedBytes(), room) << what;
    EXPECT_EQ(what == 5 ? drawn : 2, 2) << "two pictures of 40,000 bytes have room";
    list.Clear();
    draw(list, what);
  }
}

}  // namespace
}  // namespace vaxel
