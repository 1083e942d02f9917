#include "render/gdi/printer.h"

#include <windows.h>
#include <winspool.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <memory>
#include <vector>

#include "base/units.h"
#include "render/gdi/renderer.h"
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
  explicit PrinterSettings(const std::wstring& printer) : name_(printer) {
    HANDLE opened = nullptr;
    if (!OpenPrinterW(name_.data(), &opened, nullptr)) return;
    printer_.reset(opened);
    const LONG size = DocumentPropertiesW(nullptr, opened, name_.data(), nullptr, nullptr, 0);
    if (size < static_cast<LONG>(sizeof(DEVMODEW))) return;
    bytes_.resize(static_cast<std::size_t>(size));
    if (DocumentPropertiesW(nullptr, opened, name_.data(), Mode(), nullptr, DM_OUT_BUFFER) != IDOK)
      bytes_.clear();
  }

  explicit operator bool() const { return !bytes_.empty(); }
  DEVMODEW* Mode() { return reinterpret_cast<DEVMODEW*>(bytes_.data()); }

  void Turn(bool landscape) {
    Mode()->dmOrientation = landscape ? DMORIENT_LANDSCAPE : DMORIENT_PORTRAIT;
    Mode()->dmFields |= DM_ORIENTATION;
    // The driver may have settings of its own to bring in line.
    DocumentPropertiesW(nullptr, printer_.get(), name_.data(), Mode(), Mode(), DM_IN_BUFFER | DM_OUT_BUFFER);
  }

 private:
  std::wstring name_;
  UniquePrinter printer_;
  std::vector<std::byte> bytes_;
};

DeviceTransform TrueSize(HDC context) {
  return {GetDeviceCaps(context, LOGPIXELSX) / MillimetresPerInch,
          GetDeviceCaps(context, LOGPIXELSY) / MillimetresPerInch, 0, 0};
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
          1 / std::min(scale.PixelsPerMmX, scale.PixelsPerMmY)};
}

// A document in the making; what is not finished is taken back.
class Document {
 public:
  Document(HDC context, const std::wstring& name) : context_(context) {
    DOCINFOW info{};
    info.cbSize = sizeof info;
    info.lpszDocName = name.c_str();
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

// When it fails the device may have been given a part of the page.
Result<> PrintPage(HDC context, const DisplayList& list, std::size_t page, GdiStock& stock) {
  if (StartPage(context) <= 0) return Failure{.Text = TextId::PrinterBeginsNoPage};
  GdiRenderer renderer(context, TrueSize(context), stock, list);
  PlayPage(list, page, renderer);
  if (EndPage(context) <= 0) return Failure{.Text = TextId::PrinterEndsNoPage};
  return renderer.Outcome();
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

Result<PrinterFacts> FactsOf(const std::string& printer, bool isLandscape) {
  const std::wstring name = Widen(printer);
  PrinterSettings settings(name);
  if (settings) settings.Turn(isLandscape);
  const UniqueDc context(settings ? CreateICW(nullptr, name.c_str(), nullptr, settings.Mode()) : nullptr);
  if (!context) return Failure{.Text = TextId::PrinterUnknown};
  return FactsOf(context.get());
}

Result<> Print(const DisplayList& list, const PrintJob& job) {
  const std::wstring name = Widen(job.Printer);
  PrinterSettings settings(name);
  if (!settings) return Failure{.Text = TextId::PrinterUnknown};
  settings.Turn(false);
  const UniqueDc context(CreateDCW(nullptr, name.c_str(), nullptr, settings.Mode()));
  if (!context) return Failure{.Text = TextId::PrinterUnknown};
  const PrinterFacts portrait = FactsOf(context.get());
  GdiStock stock(job.Decoder, job.NudgesRightAngles);
  bool isTurned = false;
  const auto turn = [&](const Page& page) {
    if (isTurned == IsLandscape(page, portrait)) return true;
    isTurned = !isTurned;
    settings.Turn(isTurned);
    return ResetDCW(context.get(), settings.Mode()) != nullptr;
  };
  // Some printers take the first page's orientation for the document's.
  if (!list.Pages().empty() && !turn(list.Pages().front()))
    return Failure{.Text = TextId::PrinterTurnsNoPage};
  Document document(context.get(), Widen(job.DocumentName));
  if (document.IsRefused()) return {};
  if (!document.IsStarted()) return Failure{.Text = TextId::PrinterTakesNoDocument};
  for (std::size_t page = 0; page < list.Pages().size(); ++page) {
    if (!turn(list.Pages()[page])) return Failure{.Text = TextId::PrinterTurnsNoPage};
    Result<> printed = PrintPage(context.get(), list, page, stock);
    if (!printed) return printed;
  }
  if (!document.Finish()) return Failure{.Text = TextId::PrinterLeavesDocument};
  return {};
}

}  // namespace vaxel
