#include "render/gdi/printer.h"

#include <windows.h>
#include <winspool.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstring>
#include <cwctype>
#include <memory>
#include <numeric>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "base/units.h"
#include "render/gdi/font_families.h"
#include "render/gdi/renderer.h"
#include "render/paper_choice.h"
#include "resources/text_id.h"
#include "winbase/gdi_handles.h"
#include "winbase/wide_text.h"

namespace vaxel {
namespace {

struct PrinterCloser {
  using pointer = HANDLE;
  void operator()(HANDLE printer) const { ClosePrinter(printer); }
};
using UniquePrinter = std::unique_ptr<void, PrinterCloser>;

// A printer's settings, behind which its driver keeps some of its own.
class PrinterSettings {
 public:
  // Empty when there is no such printer.
  explicit PrinterSettings(const PrinterChoice& choice) : name_(Widen(choice.Name)) {
    HANDLE opened = nullptr;
    if (!OpenPrinterW(name_.data(), &opened, nullptr)) return;
    printer_.reset(opened);
    const LONG size = DocumentPropertiesW(nullptr, opened, name_.data(), nullptr, nullptr, 0);
    if (size < static_cast<LONG>(sizeof(DEVMODEW))) return;
    bytes_.resize(static_cast<std::size_t>(size));
    if (DocumentPropertiesW(nullptr, opened, name_.data(), Mode(), nullptr, DM_OUT_BUFFER) != IDOK) {
      bytes_.clear();
      return;
    }
    Take(choice);
  }

  explicit operator bool() const { return !bytes_.empty(); }
  DEVMODEW* Mode() { return reinterpret_cast<DEVMODEW*>(bytes_.data()); }

  const wchar_t* Name() const { return name_.c_str(); }
  bool IsMonochrome() { return (Mode()->dmFields & DM_COLOR) != 0 && Mode()->dmColor == DMCOLOR_MONOCHROME; }

  void Turn(bool landscape) {
    Mode()->dmOrientation = landscape ? DMORIENT_LANDSCAPE : DMORIENT_PORTRAIT;
    Mode()->dmFields |= DM_ORIENTATION;
    Settle();
  }

  void Use(const Paper& paper) {
    Mode()->dmPaperSize = static_cast<short>(paper.Kind);
    Mode()->dmFields |= DM_PAPERSIZE;
    // These would come before the paper's number.
    Mode()->dmFields &= ~static_cast<DWORD>(DM_PAPERWIDTH | DM_PAPERLENGTH | DM_FORMNAME);
    Settle();
  }

  // The papers that the printer knows, and the one that it is set to, without a size when it is none of
  // them.
  std::vector<Paper> Papers() const {
    const auto ask = [this](WORD what, wchar_t* answer) {
      return DeviceCapabilitiesW(name_.c_str(), nullptr, what, answer, nullptr);
    };
    const int count = ask(DC_PAPERS, nullptr);
    if (count <= 0 || ask(DC_PAPERSIZE, nullptr) != count) return {};
    const auto length = static_cast<std::size_t>(count);
    std::vector<WORD> kinds(length);
    std::vector<POINT> tenths(length);
    ask(DC_PAPERS, reinterpret_cast<wchar_t*>(kinds.data()));
    ask(DC_PAPERSIZE, reinterpret_cast<wchar_t*>(tenths.data()));
    std::vector<Paper> papers;
    for (std::size_t i = 0; i < length; ++i) {
      papers.push_back(
          {kinds[i], static_cast<double>(tenths[i].x) / 10, static_cast<double>(tenths[i].y) / 10});
    }
    return papers;
  }
  Paper OwnPaper() {
    for (const Paper& paper : Papers()) {
      if (paper.Kind == Mode()->dmPaperSize) return paper;
    }
    return {};
  }

 private:
  // What the user has chosen, in place of what the printer is set to.
  void Take(const PrinterChoice& choice) {
    // Those of another version of the driver mean nothing to this one.
    const auto size = static_cast<std::size_t>(Mode()->dmSize) + Mode()->dmDriverExtra;
    if (choice.DriverSettings.size() == size && size <= bytes_.size())
      std::memcpy(bytes_.data(), choice.DriverSettings.data(), size);
    if (choice.Paper > 0) {
      Mode()->dmPaperSize = static_cast<short>(choice.Paper);
      Mode()->dmFields |= DM_PAPERSIZE;
      Mode()->dmFields &= ~static_cast<DWORD>(DM_PAPERWIDTH | DM_PAPERLENGTH | DM_FORMNAME);
      if (choice.PaperWidthMm > 0 && choice.PaperHeightMm > 0) {
        Mode()->dmPaperWidth = static_cast<short>(std::lround(choice.PaperWidthMm * 10));
        Mode()->dmPaperLength = static_cast<short>(std::lround(choice.PaperHeightMm * 10));
        Mode()->dmFields |= DM_PAPERWIDTH | DM_PAPERLENGTH;
      }
    }
    // Copies are pages that are printed again.
    Mode()->dmCopies = 1;
    Settle();
  }

  // The driver may have settings of its own to bring in line.
  void Settle() {
    DocumentPropertiesW(nullptr, printer_.get(), name_.data(), Mode(), Mode(), DM_IN_BUFFER | DM_OUT_BUFFER);
  }

  std::wstring name_;
  UniquePrinter printer_;
  std::vector<std::byte> bytes_;
};

// With the upper-left corner of a page at a place of the area that can be printed on, in millimetres.
DeviceTransform TrueSize(HDC context, Point corner = {}) {
  const double across = GetDeviceCaps(context, LOGPIXELSX) / MillimetresPerInch;
  const double down = GetDeviceCaps(context, LOGPIXELSY) / MillimetresPerInch;
  return {across, down, corner.X * across, corner.Y * down};
}

PrinterFacts FactsOf(HDC context) {
  const DeviceTransform scale = TrueSize(context);
  const auto across = [&](int what) { return GetDeviceCaps(context, what) / scale.PixelsPerMmX; };
  const auto down = [&](int what) { return GetDeviceCaps(context, what) / scale.PixelsPerMmY; };
  // The sizes in millimetres that a device tells are whole ones.
  return {across(HORZRES),
          down(VERTRES),
          across(PHYSICALOFFSETX),
          down(PHYSICALOFFSETY),
          across(PHYSICALWIDTH),
          down(PHYSICALHEIGHT),
          1 / std::min(scale.PixelsPerMmX, scale.PixelsPerMmY),
          GetDeviceCaps(context, BITSPIXEL) * GetDeviceCaps(context, PLANES) > 1};
}

// A document in the making; what is not finished is taken back.
class Document {
 public:
  Document(HDC context, const PrintJob& job) : context_(context) {
    const std::wstring name = Widen(job.DocumentName), file = Widen(job.FileName);
    DOCINFOW info{};
    info.cbSize = sizeof info;
    info.lpszDocName = name.c_str();
    if (!file.empty()) info.lpszOutput = file.c_str();
    started_ = StartDocW(context, &info) > 0;
    isRefused_ = !started_ && GetLastError() == ERROR_CANCELLED;
  }
  ~Document() {
    if (started_) AbortDoc(context_);
  }
  Document(const Document&) = delete;
  Document& operator=(const Document&) = delete;

  bool IsStarted() const { return started_; }
  // Printers that write files ask the user for a name.
  bool IsRefused() const { return isRefused_; }
  bool Finish() {
    started_ = false;
    return EndDoc(context_) > 0;
  }

 private:
  HDC context_;
  bool started_ = false, isRefused_ = false;
};

bool IsLandscape(const Page& page, const PrinterFacts& portrait) {
  const double asItIs = std::abs(page.Width - portrait.WidthMm) + std::abs(page.Height - portrait.HeightMm);
  const double turned = std::abs(page.Width - portrait.HeightMm) + std::abs(page.Height - portrait.WidthMm);
  return turned < asItIs;
}

// The pages of a document, one after the other on one context.
class PageSequence {
 public:
  // What the job names must outlive it. It fails when there is no such printer or no paper for the pages.
  static Result<PageSequence> Begin(const DisplayList& list, const PrintJob& job) {
    PrinterSettings settings(job.Printer);
    if (!settings) return Failure{.Text = TextId::PrinterUnknown};
    const bool isFile = !job.FileName.empty();
    if (isFile) {
      const std::optional<Paper> paper = ChoosePaper(settings.Papers(), settings.OwnPaper(), list);
      if (!paper) return Failure{.Text = TextId::NoPaperFits};
      settings.Use(*paper);
    }
    settings.Turn(false);
    UniqueDc context(CreateDCW(nullptr, settings.Name(), nullptr, settings.Mode()));
    if (!context) return Failure{.Text = TextId::PrinterUnknown};
    return PageSequence(std::move(settings), std::move(context), isFile);
  }

  HDC Context() const { return context_.get(); }

  bool TurnFor(const Page& page) {
    const bool turned = IsLandscapeHere(page);
    if (isTurned_ == turned) return true;
    isTurned_ = turned;
    settings_.Turn(isTurned_);
    return ResetDCW(context_.get(), settings_.Mode()) != nullptr;
  }

  // When it fails the device may have been given a part of the page.
  Result<> Print(const DisplayList& list, std::size_t number, GdiStock& stock) {
    const Page& page = list.Pages()[number];
    if (!TurnFor(page)) return Failure{.Text = TextId::PrinterTurnsNoPage};
    if (StartPage(context_.get()) <= 0) return Failure{.Text = TextId::PrinterBeginsNoPage};
    GdiRenderer renderer(context_.get(), PlaceOf(page), stock, list);
    PlayPage(list, number, renderer);
    if (EndPage(context_.get()) <= 0) return Failure{.Text = TextId::PrinterEndsNoPage};
    return renderer.Outcome();
  }

 private:
  PageSequence(PrinterSettings settings, UniqueDc context, bool isCentred)
      : settings_(std::move(settings)),
        context_(std::move(context)),
        portrait_(FactsOf(context_.get())),
        isCentred_(isCentred) {}

  bool IsLandscapeHere(const Page& page) const {
    if (!isCentred_) return IsLandscape(page, portrait_);
    return !FitsUpright(page, {0, portrait_.PaperWidthMm, portrait_.PaperHeightMm});
  }
  // Of a mirrored page, left and right are changed about its middle.
  DeviceTransform PlaceOf(const Page& page) const {
    DeviceTransform place = TrueSize(context_.get(), CornerOf(page));
    if (page.IsMirrored) {
      place.OffsetX += page.Width * place.PixelsPerMmX;
      place.PixelsPerMmX = -place.PixelsPerMmX;
    }
    return place;
  }
  Point CornerOf(const Page& page) const {
    if (!isCentred_) return {};
    const PrinterFacts facts = FactsOf(context_.get());
    return {(facts.PaperWidthMm - page.Width) / 2 - facts.LeftMm,
            (facts.PaperHeightMm - page.Height) / 2 - facts.TopMm};
  }

  PrinterSettings settings_;
  UniqueDc context_;
  PrinterFacts portrait_;
  bool isCentred_;
  bool isTurned_ = false;
};

// The installed printers and their drivers.
std::vector<std::pair<std::wstring, std::wstring>> PrintersAndDrivers() {
  constexpr DWORD kinds = PRINTER_ENUM_LOCAL | PRINTER_ENUM_CONNECTIONS;
  DWORD size = 0, count = 0;
  EnumPrintersW(kinds, nullptr, 2, nullptr, 0, &size, &count);
  std::vector<BYTE> bytes(size);
  if (size == 0 || !EnumPrintersW(kinds, nullptr, 2, bytes.data(), size, &size, &count)) return {};
  const auto* const printers = reinterpret_cast<const PRINTER_INFO_2W*>(bytes.data());
  std::vector<std::pair<std::wstring, std::wstring>> found;
  for (DWORD i = 0; i < count; ++i) {
    const auto text = [](const wchar_t* words) { return std::wstring(words ? words : L""); };
    found.emplace_back(text(printers[i].pPrinterName), text(printers[i].pDriverName));
  }
  return found;
}

}  // namespace

std::string DefaultPrinter() {
  DWORD length = 0;
  GetDefaultPrinterW(nullptr, &length);
  std::wstring name(length, L'\0');
  if (length == 0 || !GetDefaultPrinterW(name.data(), &length)) return {};
  name.resize(length - 1);  // without the terminator
  return Narrow(name);
}

// The system's own one takes the name of its file with the document; of others one may hope for it.
std::string PdfPrinter() {
  std::string other;
  for (auto& [printer, driver] : PrintersAndDrivers()) {
    std::transform(driver.begin(), driver.end(), driver.begin(), std::towupper);
    if (driver == L"MICROSOFT PRINT TO PDF") return Narrow(printer);
    if (other.empty() && driver.find(L"PDF") != std::wstring::npos) other = Narrow(printer);
  }
  return other;
}

bool HasPrinter(const std::string& name) {
  HANDLE opened = nullptr;
  std::wstring wide = Widen(name);
  if (wide.empty() || !OpenPrinterW(wide.data(), &opened, nullptr)) return false;
  return UniquePrinter(opened) != nullptr;
}

Result<PrinterFacts> FactsOf(const PrinterChoice& printer, bool isLandscape) {
  PrinterSettings settings(printer);
  if (settings) settings.Turn(isLandscape);
  const UniqueDc context(settings ? CreateICW(nullptr, settings.Name(), nullptr, settings.Mode()) : nullptr);
  if (!context) return Failure{.Text = TextId::PrinterUnknown};
  PrinterFacts facts = FactsOf(context.get());
  if (settings.IsMonochrome()) facts.HasColour = false;
  return facts;
}

std::string SettingsOf(const PrinterChoice& printer) {
  PrinterSettings settings(printer);
  if (!settings) return {};
  settings.Turn(printer.IsLandscape);
  const DEVMODEW* const mode = settings.Mode();
  return {reinterpret_cast<const char*>(mode), std::size_t{mode->dmSize} + mode->dmDriverExtra};
}

std::vector<std::string> FontsOf(const PrinterChoice& printer) {
  PrinterSettings settings(printer);
  const UniqueDc context(settings ? CreateICW(nullptr, settings.Name(), nullptr, settings.Mode()) : nullptr);
  if (!context) return {};
  return FontFamilies(context.get());
}

Result<> Print(const DisplayList& list, const PrintJob& job) {
  Result<PageSequence> pages = PageSequence::Begin(list, job);
  if (!pages) return pages.Why();
  // Some printers take the first page's orientation for the document's.
  std::vector<std::size_t> order = job.Pages;
  if (order.empty()) {
    order.resize(list.Pages().size());
    std::iota(order.begin(), order.end(), std::size_t{0});
  }
  if (!order.empty() && !pages->TurnFor(list.Pages()[order.front()]))
    return Failure{.Text = TextId::PrinterTurnsNoPage};
  GdiStock stock(job.Decoder, job.NudgesRightAngles);
  Document document(pages->Context(), job);
  if (document.IsRefused() && job.FileName.empty()) return Failure{};
  if (!document.IsStarted()) return Failure{.Text = TextId::PrinterTakesNoDocument};
  for (const std::size_t page : order) {
    if (Result<> printed = pages->Print(list, page, stock); !printed) return printed;
  }
  if (!document.Finish()) return Failure{.Text = TextId::PrinterLeavesDocument};
  return {};
}

}  // namespace vaxel
