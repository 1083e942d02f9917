// What a window shows to help while a script is written.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "app/script_editor.h"
#include "drawing/colour.h"

namespace vaxel {

// The panel below the editor has one page at a time, or is not there.
enum class AidPage : std::uint8_t { None, Help, Problems };

// What may be meant by what is typed.
struct Offer {
  std::string Shown, Explanation;
  std::optional<Colour> Sample;
};

struct AidHelp {
  std::string Text;
  std::vector<EditorRange> Strong;  // the parts that matter now
};

class WritingAidView {
 public:
  virtual ~WritingAidView() = default;

  // A list beside a place of the text, which takes no keys; the first offer is chosen.
  virtual void ShowOffers(const std::vector<Offer>& offers, std::size_t place) = 0;
  virtual void ChooseOffer(std::size_t index) = 0;
  virtual void HideOffers() = 0;
  // They fill their pages, whether these are shown or not.
  virtual void SetHelp(const AidHelp& help) = 0;
  virtual void SetProblems(const std::vector<std::string>& problems) = 0;
  // The lines of the text, from 1, that are in error.
  virtual void MarkLines(const std::vector<std::size_t>& lines) = 0;
  virtual void ChooseProblem(std::size_t index) = 0;
  virtual void ShowPage(AidPage page) = 0;
  // The captions of the pages.
  virtual void SetPageCaptions(const std::string& help, const std::string& problems) = 0;
};

}  // namespace vaxel
