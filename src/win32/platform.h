// What the application asks of the system, on Windows.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <string>

#include "app/platform.h"
#include "render/system_decoder.h"
#include "render/system_measurer.h"

namespace vaxel {

class PlatformWin32 : public Platform {
 public:
  // nudgesRightAngles (see CLogFont) is asked for each file that is written.
  explicit PlatformWin32(std::function<bool()> nudgesRightAngles);

  std::chrono::steady_clock::time_point Now() override { return std::chrono::steady_clock::now(); }
  bool IsCtrlDown() override;
  bool IsNtFamily() override { return true; }
  std::string SystemDescription() override;
  std::string LanguageCode() override;
  std::string Today() override;
  std::uint32_t ProcessId() override;
  bool IsRunning(std::uint32_t processId) override;
  std::string UserDataFolder() override;
  bool CanWriteIn(const std::string& folder) override;
  std::string TimeForNames() override;
  void SetWorkingFolder(const std::string& folder) override;
  bool OpenHelp(const std::string& helpFile, const std::string& word) override;
  std::vector<std::string> FontNames() override;
  TextMeasurer* Measurer() override { return &measurer_; }
  PictureDecoder* Decoder() override { return &decoder_; }
  Result<> WritePng(const DisplayList& drawing, std::size_t page, double dpi, ByteSink& sink) override;
  Result<> WriteEmf(const DisplayList& drawing, std::size_t page, ByteSink& sink) override;
  bool CopyPicture(const std::string& emf, const std::string& png) override;

 private:
  std::function<bool()> nudgesRightAngles_;
  SystemMeasurer measurer_;
  SystemDecoder decoder_;
};

// The folder of the program's own file, ending in "\", and that of the process.
std::string ProgramFolder();
std::string WorkingFolder();

}  // namespace vaxel
