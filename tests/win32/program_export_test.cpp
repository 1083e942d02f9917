// What the real program exports and copies, measured: every format has the marks of one dial at their places
// within 0.05 mm (pictures of larger pixels within those), whatever the window shows.
#include <windows.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "render/gdi/bitmap.h"
#include "render/gdi/pictures.h"
#include "tests/win32/program_fixture.h"
#include "win32/dialog_ids.h"

namespace vaxel {
namespace {

namespace fs = std::filesystem;
using test::BytesOf;

constexpr double Exact = 0.05;  // mm
constexpr double MillimetresPerInch = 25.4;

enum Format : int { Svg, Png, Emf, Pdf };
enum Page : int { Drawing, Paper };

constexpr char Dial[] =
    "CentreI = 100, 100, N\r\nEpaisT = 0.4mm\r\nTrait = 0, 0, 4, 0\r\nTrait = 56, 40, 60, 40\r\n"
    "Trait = 30, 18, 30, 22\r\nCercle = 45, 10, 3\r\nTexte = 10, 30, , , Omega";

struct Edges {
  double Left, Top, Right, Bottom;
};

// The ink of its figures, y upward.
constexpr Edges Marks[] = {
    {-0.2, 0.2, 4.2, -0.2}, {55.8, 40.2, 60.2, 39.8}, {29.8, 22.2, 30.2, 17.8}, {41.8, 13.2, 48.2, 6.8}};
// Of a page as large as the drawing, with its margin of 1 mm.
constexpr double PageWidth = 62.4, PageHeight = 42.4;
constexpr Point OriginOnPage = {1.2, PageHeight - 1.2};

// A page in grey, 0 for black.
struct Raster {
  int Width = 0, Height = 0;
  double PixelMm = 1;
  std::vector<unsigned char> Grey{};

  bool IsInk(int x, int y) const {
    return Grey[static_cast<std::size_t>(y) * static_cast<std::size_t>(Width) + static_cast<std::size_t>(x)] <
           128;
  }
};

Raster FromPixels(int width, int height, double pixelMm, const std::uint32_t* pixels) {
  Raster raster{width, height, pixelMm};
  const std::size_t count = static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
  for (std::size_t i = 0; i < count; ++i) raster.Grey.push_back(static_cast<unsigned char>(pixels[i] & 0xFF));
  return raster;
}

Edges InkNear(const Raster& raster, const Edges& expected) {
  constexpr double around = 0.7;
  const auto pixel = [&](double millimetres, int limit) {
    return std::clamp(static_cast<int>(millimetres / raster.PixelMm), 0, limit - 1);
  };
  Edges ink{1e9, 1e9, -1e9, -1e9};
  for (int y = pixel(expected.Top - around, raster.Height);
       y <= pixel(expected.Bottom + around, raster.Height); ++y) {
    for (int x = pixel(expected.Left - around, raster.Width);
         x <= pixel(expected.Right + around, raster.Width); ++x) {
      if (!raster.IsInk(x, y)) continue;
      ink = {std::min(ink.Left, x * raster.PixelMm), std::min(ink.Top, y * raster.PixelMm),
             std::max(ink.Right, (x + 1) * raster.PixelMm), std::max(ink.Bottom, (y + 1) * raster.PixelMm)};
    }
  }
  return ink;
}

// origin: where the script's 0,0 lies, from the upper-left corner of the picture.
void ExpectDial(const Raster& raster, Point origin, const char* what) {
  // Where an edge lies within a pixel is not told here.
  const double tolerance = std::max(Exact, 0.75 * raster.PixelMm);
  double farthest = 0;
  for (const Edges& mark : Marks) {
    const Edges expected = {origin.X + mark.Left, origin.Y - mark.Top, origin.X + mark.Right,
                            origin.Y - mark.Bottom};
    const Edges ink = InkNear(raster, expected);
    const double off =
        std::max({std::abs(ink.Left - expected.Left), std::abs(ink.Top - expected.Top),
                  std::abs(ink.Right - expected.Right), std::abs(ink.Bottom - expected.Bottom)});
    EXPECT_LE(off, tolerance) << what << ", the mark at " << mark.Left << ": " << ink.Left - expected.Left
                              << " " << ink.Top - expected.Top << " " << ink.Right - expected.Right << " "
                              << ink.Bottom - expected.Bottom;
    farthest = std::max(farthest, off);
  }
  std::printf("%s: no edge is farther than %.3f mm from its place.\n", what, farthest);
}

void ExpectPng(const std::string& bytes, double dpi, const char* what) {
  Picture picture;
  ASSERT_EQ(ReadPicture(bytes, picture), PictureFault::None) << what;
  EXPECT_NEAR(picture.Width * MillimetresPerInch / dpi, PageWidth, MillimetresPerInch / dpi) << what;
  EXPECT_NEAR(picture.Height * MillimetresPerInch / dpi, PageHeight, MillimetresPerInch / dpi) << what;
  std::vector<std::uint32_t> pixels;
  ASSERT_TRUE((*MakeImagingDecoder())->Decode(picture, pixels)) << what;
  ExpectDial(FromPixels(static_cast<int>(picture.Width), static_cast<int>(picture.Height),
                        MillimetresPerInch / dpi, pixels.data()),
             OriginOnPage, what);
}

void ExpectEmf(const std::string& bytes, const char* what) {
  const HENHMETAFILE file =
      SetEnhMetaFileBits(static_cast<UINT>(bytes.size()), reinterpret_cast<const BYTE*>(bytes.data()));
  ASSERT_NE(file, nullptr) << what;
  ENHMETAHEADER head{};
  GetEnhMetaFileHeader(file, sizeof head, &head);
  EXPECT_EQ(head.rclFrame.right - head.rclFrame.left, std::lround(PageWidth * 100)) << what;
  EXPECT_EQ(head.rclFrame.bottom - head.rclFrame.top, std::lround(PageHeight * 100)) << what;
  constexpr int perMm = 40;
  GdiBitmap bitmap(static_cast<int>(PageWidth * perMm), static_cast<int>(PageHeight * perMm));
  std::fill_n(bitmap.Pixels(), bitmap.PixelCount(), 0xFFFFFFFF);
  {
    const BitmapDc context(bitmap);
    const RECT box = {0, 0, bitmap.Width(), bitmap.Height()};
    EXPECT_TRUE(PlayEnhMetaFile(context.Handle(), file, &box)) << what;
    GdiFlush();
  }
  DeleteEnhMetaFile(file);
  ExpectDial(FromPixels(bitmap.Width(), bitmap.Height(), 1.0 / perMm, bitmap.Pixels()), OriginOnPage, what);
}

// Its numbers are millimetres.
void ExpectSvg(const std::string& svg) {
  EXPECT_NE(svg.find("width=\"62.4mm\" height=\"42.4mm\""), std::string::npos) << svg;
  std::size_t at = 0;
  const auto next = [&](const char* name) {
    at = svg.find(std::string(" ") + name + "=\"", at);
    if (at == std::string::npos) return -1.0;
    return std::strtod(svg.c_str() + svg.find('"', at) + 1, nullptr);
  };
  for (const Edges& mark : {Marks[0], Marks[1], Marks[2]}) {
    EXPECT_NEAR(next("x1"), OriginOnPage.X + mark.Left + 0.2, Exact);
    EXPECT_NEAR(next("y1"), OriginOnPage.Y - mark.Bottom - 0.2, Exact);
    EXPECT_NEAR(next("x2"), OriginOnPage.X + mark.Right - 0.2, Exact);
    EXPECT_NEAR(next("y2"), OriginOnPage.Y - mark.Top + 0.2, Exact);
    EXPECT_NEAR(next("stroke-width"), 0.4, 0.001);
  }
  EXPECT_NEAR(next("cx"), OriginOnPage.X + 45, Exact);
  EXPECT_NEAR(next("cy"), OriginOnPage.Y - 10, Exact);
  EXPECT_NEAR(next("r"), 3, Exact);
}

class Exports : public ProgramTest {
 protected:
  // The dial, shown twice as large, corrected, and out of its middle.
  void StartEnlarged() {
    StartWith(Dial);
    // What this line draws has its halo from now on.
    program_->SelectInEditor(40, 40);
    program_->Post(MenuId::Mnu_Zoom);
    const ShownDialog zoom = program_->AwaitDialog();
    zoom.Type(IDC_TEXT1, "2");
    zoom.Type(IDC_TEXT2, "254/250");
    zoom.Answer(IDC_COMMAND1);
    program_->AwaitIdle();
    program_->MovePointer(120, 90);
    program_->Key(VK_F6);
    AwaitPlace("0  0");
  }
  void ExportTo(int format, int page, const std::string& dpi, const std::string& name) {
    const ShownDialog dialog = program_->CommandWithDialog(MenuId::Mnu_Exporter);
    dialog.Click(IDC_OPTION1_FIRST + format);
    dialog.Click(IDC_OPTION2_FIRST + page);
    dialog.Type(IDC_TEXT1, dpi);
    dialog.Answer(IDOK);
    const ShownDialog file = program_->AwaitDialog();
    ASSERT_TRUE(file.IsFileDialog());
    file.AnswerFile(name);
    file.AwaitClosed();
    program_->AwaitIdle();
  }
};

TEST_F(Exports, AreOfTrueSizeInEveryFormat) {
  StartEnlarged();
  ExportTo(Svg, Drawing, "600", folder_.NameOf("dial"));
  ExpectSvg(folder_.Read("dial.svg"));
  ExportTo(Png, Drawing, "600", folder_.NameOf("dial"));
  ExpectPng(folder_.Read("dial.png"), 600, "PNG");
  ExportTo(Emf, Drawing, "600", folder_.NameOf("dial"));
  ExpectEmf(folder_.Read("dial.emf"), "EMF");
  EXPECT_TRUE(HasLine(folder_.Read("Vaxel.cfg"), "PointsExport = 600")) << folder_.Read("Vaxel.cfg");
  EndUnasked();
}

std::string OnClipboard(UINT format) {
  const HANDLE data = GetClipboardData(format);
  const SIZE_T size = data ? GlobalSize(data) : 0;
  const void* const bytes = size > 0 ? GlobalLock(data) : nullptr;
  std::string copied = bytes ? std::string(static_cast<const char*>(bytes), size) : std::string();
  if (bytes) GlobalUnlock(data);
  return copied;
}

TEST_F(Exports, LieOnTheClipboardToo) {
  StartEnlarged();
  program_->Command(MenuId::Mnu_CopierDessin);
  program_->AwaitIdle();
  ASSERT_TRUE(OpenClipboard(nullptr));
  const auto file = static_cast<HENHMETAFILE>(GetClipboardData(CF_ENHMETAFILE));
  std::string emf(GetEnhMetaFileBits(file, 0, nullptr), '\0');
  GetEnhMetaFileBits(file, static_cast<UINT>(emf.size()), reinterpret_cast<BYTE*>(emf.data()));
  const std::string png = OnClipboard(RegisterClipboardFormatW(L"PNG"));
  CloseClipboard();
  ExpectEmf(emf, "copied EMF");
  ExpectPng(png, 300, "copied PNG");
  // Somebody else has it all the time.
  ASSERT_TRUE(OpenClipboard(nullptr));
  program_->Post(MenuId::Mnu_CopierDessin);
  const ShownDialog box = program_->AwaitDialog();
  EXPECT_EQ(box.Message(), TextIn(English, TextId::ClipboardUnusable));
  CloseClipboard();
  box.Answer(IDOK);
  program_->AwaitIdle();
  EndUnasked();
}

// These need what tests/win32/export_test.sh does meanwhile and between them: the printer of the tests writes
// PostScript, which becomes PDF, and that becomes pictures. It names the folder for all.
class PdfExports : public Exports {
 protected:
  void SetUp() override { ASSERT_NE(Environment("VAXEL_EXPORT_FOLDER"), ""); }
  static fs::path Folder() { return fs::absolute(Environment("VAXEL_EXPORT_FOLDER")); }
};

TEST_F(PdfExports, AreWritten) {
  SetEnvironmentVariableW(L"TMP", Folder().c_str());  // where the program keeps what is not complete
  StartEnlarged();
  for (const int page : {Drawing, Paper}) {
    const fs::path name = Folder() / (page == Drawing ? "drawing.pdf" : "paper.pdf");
    ExportTo(Pdf, page, "300", name.string());
    EXPECT_TRUE(BytesOf(name).starts_with("%PDF-"));
  }
  EndUnasked();
  for (const fs::path& file : FilesIn(Folder(), ".pdf"))
    EXPECT_FALSE(file.filename().string().starts_with("vaxel-"));
}

Raster ReadPgm(const fs::path& file) {
  const std::string bytes = BytesOf(file);
  Raster raster;
  raster.PixelMm = MillimetresPerInch / 600;
  const std::size_t comment = bytes.find('#'), rest = bytes.find('\n', comment);
  int used = 0;
  if (comment == std::string::npos ||
      std::sscanf(bytes.c_str() + rest, "%d %d 255%n", &raster.Width, &raster.Height, &used) != 2)
    return raster;
  const auto first = bytes.begin() + static_cast<std::ptrdiff_t>(rest) + used + 1;
  raster.Grey.assign(first, bytes.end());
  return raster;
}

// The sheets of both printers of the tests, as their .ppd files say: A4 of 595.2 by 841.92 points. The first
// cannot print on 12 points at the left and 24 at the bottom.
TEST_F(PdfExports, AreOfTrueSize) {
  constexpr double pointMm = MillimetresPerInch / 72, width = 595.2 * pointMm, height = 841.92 * pointMm;
  const Raster drawing = ReadPgm(Folder() / "drawing.pgm"), paper = ReadPgm(Folder() / "paper.pgm");
  for (const Raster* sheet : {&drawing, &paper}) {
    ASSERT_NEAR(sheet->Width * sheet->PixelMm, width, 0.1);
    ASSERT_NEAR(sheet->Height * sheet->PixelMm, height, 0.1);
  }
  const Point corner = {(width - PageWidth) / 2, (height - PageHeight) / 2};
  ExpectDial(drawing, corner + OriginOnPage, "PDF");
  ExpectDial(paper, {100 + 12 * pointMm, height - 24 * pointMm - 100}, "PDF as on paper");
}

}  // namespace
}  // namespace vaxel
