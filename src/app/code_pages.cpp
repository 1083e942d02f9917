#include "app/code_pages.h"

#include <algorithm>
#include <cstdint>
#include <map>
#include <utility>
#include <vector>

#include "app/line_surroundings.h"
#include "app/script_colours.h"
#include "app/utf16_offsets.h"
#include "base/text.h"
#include "base/units.h"
#include "drawing/standard_faces.h"
#include "drawing/text_layout.h"

namespace vaxel {
namespace {

constexpr Colour Grey = MakeColour(110, 110, 110);
constexpr double RuleMm = 0.15;
// In parts of the size of the characters.
constexpr double Leading = 1.25, HeadHeight = 2.2;
constexpr std::size_t TabWidth = 8;
constexpr const char* GoesOnMark = "\u00BB";

// Characters that follow one another in one ink.
struct CodeRun {
  double Left = 0, Length = 0;  // mm, from where the text begins
  std::string Text;
  Colour Ink = Black;
};

struct CodeRow {
  std::size_t Line = 0;  // from 1; 0: goes on with the line before
  std::vector<CodeRun> Runs;
};

// How long texts are on paper. A character is measured once.
class CodeMeasure {
 public:
  explicit CodeMeasure(const CodeLayout& layout)
      : face_(layout.Face),
        sizeMm_(layout.Points * MillimetresPerInch / 72),
        table_(StandardFace(layout.Face)),
        measurer_(layout.Measurer ? layout.Measurer : &standIn_) {}
  CodeMeasure(const CodeMeasure&) = delete;
  CodeMeasure& operator=(const CodeMeasure&) = delete;

  double SizeMm() const { return sizeMm_; }
  double WidthOf(std::string_view character) {
    const auto known = widths_.find(character);
    if (known != widths_.end()) return known->second;
    std::optional<double> width = table_ ? table_->Width(character) : std::nullopt;
    if (!width) width = measurer_->Width(face_, character);
    return widths_.emplace(character, *width * sizeMm_).first->second;
  }
  double LengthOf(std::string_view text) {
    double length = 0;
    for (const std::string_view character : CharactersOf(text)) length += WidthOf(character);
    return length;
  }

 private:
  const FontFace& face_;
  double sizeMm_;
  const FaceTable* table_;
  StandInMeasurer standIn_;
  TextMeasurer* measurer_;
  std::map<std::string, double, std::less<>> widths_;
};

// The ink of each unit of a line, asked for in order.
class LineInks {
 public:
  explicit LineInks(std::vector<ColouredRange> ranges) : ranges_(std::move(ranges)) {}

  Colour At(std::size_t unit) {
    while (next_ < ranges_.size() && ranges_[next_].End <= unit) ++next_;
    return next_ < ranges_.size() && ranges_[next_].Begin <= unit ? ranges_[next_].Ink : Black;
  }

 private:
  std::vector<ColouredRange> ranges_;
  std::size_t next_ = 0;
};

// Fills rows with the characters of one line after the other.
class RowMaker {
 public:
  RowMaker(CodeMeasure& measure, double widthMm) : measure_(measure), widthMm_(widthMm) {}

  void AddLine(std::string_view line, LineInks inks) {
    Begin(++line_);
    std::size_t column = 0, unit = 0;
    for (const std::string_view character : CharactersOf(line)) {
      const Colour ink = inks.At(unit);
      unit += Utf16Length(character);
      const bool isTab = character == "\t";
      const std::size_t count = isTab ? TabWidth - column % TabWidth : 1;
      for (std::size_t i = 0; i < count; ++i) Add(isTab ? " " : DrawableText(character), ink);
      column += count;
    }
  }
  std::vector<CodeRow> Take() { return std::move(rows_); }

 private:
  void Begin(std::size_t line) {
    rows_.push_back({line, {}});
    left_ = 0;
  }
  void Add(const std::string& character, Colour ink) {
    if (character.empty()) return;
    const double width = measure_.WidthOf(character);
    if (left_ > 0 && left_ + width > widthMm_) Begin(0);
    std::vector<CodeRun>& runs = rows_.back().Runs;
    if (runs.empty() || runs.back().Ink != ink) runs.push_back({left_, 0, {}, ink});
    runs.back().Text += character;
    runs.back().Length += width;
    left_ += width;
  }

  CodeMeasure& measure_;
  double widthMm_, left_ = 0;
  std::size_t line_ = 0;
  std::vector<CodeRow> rows_;
};

std::vector<CodeRow> RowsOf(std::string_view text, CodeMeasure& measure, double widthMm, bool hasColour) {
  RowMaker maker(measure, widthMm);
  std::string before;
  for (std::size_t from = 0; from < text.size();) {
    const std::size_t end = std::min(text.find('\n', from), text.size());
    const std::string_view line = text.substr(from, end - from);
    LineContext context;
    context.Before = before;
    maker.AddLine(line, LineInks(hasColour ? ColoursOfLine(line, context) : std::vector<ColouredRange>()));
    // A command that goes on for ever is not read anew for each of its lines.
    constexpr std::size_t longest = 20'000;
    if (!AppendContinued(before, line) || before.size() > longest) before.clear();
    from = end + 1;
  }
  return maker.Take();
}

class CodePainter {
 public:
  CodePainter(const CodeLayout& layout, CodeMeasure& measure, std::size_t lines)
      : layout_(layout), measure_(measure), sizeMm_(measure.SizeMm()) {
    margin_ = std::min({5.0, layout.WidthMm / 20, layout.HeightMm / 20});
    numbersMm_ = measure.LengthOf(std::to_string(lines) + "  ");
    top_ = margin_ + HeadHeight * sizeMm_;
    rowsAPage_ = std::max(1.0, (layout.HeightMm - 2 * top_) / (Leading * sizeMm_));
  }

  // What is left of the width for the text.
  double TextWidth() const { return layout_.WidthMm - 2 * margin_ - numbersMm_; }

  DisplayList Paint(const std::vector<CodeRow>& rows) {
    const auto onPage = static_cast<std::size_t>(rowsAPage_);
    const std::size_t pages = (rows.size() + onPage - 1) / onPage;
    for (std::size_t page = 0; page < pages; ++page) {
      list_.BeginPage(layout_.WidthMm, layout_.HeightMm);
      PaintFrame(layout_.Foot(page + 1, pages));
      double baseline = top_ + sizeMm_;
      const std::size_t end = std::min(rows.size(), (page + 1) * onPage);
      for (std::size_t row = page * onPage; row < end; ++row) {
        PaintRow(rows[row], baseline);
        baseline += Leading * sizeMm_;
      }
    }
    return std::move(list_);
  }

 private:
  void PaintRow(const CodeRow& row, double baseline) {
    const std::string number = row.Line > 0 ? std::to_string(row.Line) : GoesOnMark;
    const double textLeft = margin_ + numbersMm_;
    const double room = measure_.LengthOf("  ");
    PaintText(number, {textLeft - room - measure_.LengthOf(number), baseline}, Grey);
    for (const CodeRun& run : row.Runs) {
      if (run.Text.find_first_not_of(' ') == std::string::npos) continue;
      Put(run.Text, {textLeft + run.Left, baseline}, run.Length, run.Ink);
    }
  }
  void PaintFrame(const std::string& foot) {
    const double right = layout_.WidthMm - margin_, bottom = layout_.HeightMm - margin_;
    const double date = measure_.LengthOf(layout_.Date);
    PaintText(Shortened(layout_.FileName, right - margin_ - date - 2 * sizeMm_), {margin_, margin_ + sizeMm_},
              Black);
    PaintText(layout_.Date, {right - date, margin_ + sizeMm_}, Black);
    PaintText(foot, {(layout_.WidthMm - measure_.LengthOf(foot)) / 2, bottom}, Black);
    for (const double height : {margin_ + sizeMm_ * 1.5, bottom - sizeMm_ * 1.3}) {
      list_.Add({RuleMm, Grey, 0, LineShape{{margin_, height}, {right, height}}});
    }
  }
  // Of a name the end says most.
  std::string Shortened(const std::string& text, double widthMm) {
    const std::vector<std::string_view> characters = CharactersOf(text);
    double length = measure_.LengthOf(text);
    if (length <= widthMm) return text;
    std::size_t dropped = 0;
    while (dropped < characters.size() && length > widthMm - sizeMm_) {
      length -= measure_.WidthOf(characters[dropped++]);
    }
    std::string shortened = "...";
    for (; dropped < characters.size(); ++dropped) shortened += characters[dropped];
    return shortened;
  }
  void PaintText(const std::string& text, Point start, Colour ink) {
    if (!text.empty()) Put(text, start, measure_.LengthOf(text), ink);
  }
  void Put(const std::string& text, Point start, double length, Colour ink) {
    list_.AddText(text, layout_.Face, {start, 0, sizeMm_, length, 0, 0}, {0, ink, 0, {}});
  }

  const CodeLayout& layout_;
  CodeMeasure& measure_;
  double sizeMm_;
  double margin_ = 0, numbersMm_ = 0, top_ = 0, rowsAPage_ = 1;  // mm, but for the last
  DisplayList list_;
};

}  // namespace

DisplayList CodePages(std::string_view text, const CodeLayout& layout) {
  CodeMeasure measure(layout);
  const auto count = static_cast<std::size_t>(std::ranges::count(text, '\n')) + 1;
  CodePainter painter(layout, measure, count);
  return painter.Paint(RowsOf(text, measure, painter.TextWidth(), layout.HasColour));
}

}  // namespace vaxel
