#include "app/pdf_file.h"

#include <chrono>
#include <cstddef>
#include <filesystem>
#include <string_view>
#include <system_error>
#include <thread>

#include "base/files.h"
#include "base/output_file.h"

namespace vaxel {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

// A printer that has not written anything more for so long has come to its end.
constexpr auto GrowthPause = 30s;
constexpr auto BetweenLooks = 20ms;
constexpr std::size_t LargestFile = std::size_t{1} << 30;

// A place apart from the user's files, for what may stay half a file. The printer's service may hold it
// still when it is to be removed; the next start of the same export uses another.
class Draft {
 public:
  explicit Draft(std::uint32_t process) {
    std::error_code error;
    const fs::path folder = fs::temp_directory_path(error);
    for (int number = 1; name_.empty() || fs::exists(PathOf(name_), error); ++number) {
      name_ = NameOf(folder / ("vaxel-" + std::to_string(process) + "-" + std::to_string(number) + ".pdf"));
    }
  }
  ~Draft() {
    std::error_code ignored;
    fs::remove(PathOf(name_), ignored);
  }
  Draft(const Draft&) = delete;
  Draft& operator=(const Draft&) = delete;

  const std::string& Name() const { return name_; }
  std::uintmax_t Size() const {
    std::error_code error;
    const std::uintmax_t size = fs::file_size(PathOf(name_), error);
    return error ? 0 : size;
  }

 private:
  std::string name_;
};

bool IsWholePdf(std::string_view bytes) {
  constexpr std::size_t tail = 1024;
  const std::string_view end = bytes.substr(bytes.size() - std::min(bytes.size(), tail));
  return bytes.starts_with("%PDF-") && end.find("%%EOF") != std::string_view::npos;
}

// The bytes of the file once they are all there.
Result<std::string> AwaitWhole(AppContext& app, const Draft& draft, const std::function<bool()>& isStopped) {
  auto lastGrowth = app.Platform.Now();
  for (std::uintmax_t size = 0;;) {
    if (isStopped()) return Failure{.Text = TextId::ExportStopped};
    const std::uintmax_t now = draft.Size();
    if (now == size && now > 0) {
      if (Result<std::string> bytes = ReadWholeFile(draft.Name(), LargestFile); bytes && IsWholePdf(*bytes))
        return bytes;
    }
    if (now != size) lastGrowth = app.Platform.Now();
    if (app.Platform.Now() - lastGrowth > GrowthPause) return Failure{.Text = TextId::PdfNotWritten};
    size = now;
    std::this_thread::sleep_for(BetweenLooks);
  }
}

}  // namespace

Result<> WritePdf(AppContext& app, const DisplayList& drawing, const PdfFile& file,
                  const std::function<bool()>& isStopped) {
  const std::string printer = app.Printers.PdfPrinter();
  if (printer.empty()) return Failure{.Text = TextId::NoPdfPrinter};
  const Draft draft(app.Platform.ProcessId());
  if (Result<> printed = app.Printers.PrintToFile({printer, file.DocumentName, draft.Name()}, drawing);
      !printed)
    return printed;
  const Result<std::string> bytes = AwaitWhole(app, draft, isStopped);
  if (!bytes) return bytes.Why();
  OutputFile target(file.Name, Lasting::Redrawable);
  target.Write(*bytes);
  return target.Commit();
}

}  // namespace vaxel
