// The modules that bring foreign libraries. PDF and PNG are made by a module of its own, which is loaded when
// the first of them is asked for: a run that needs neither starts without Cairo and all that it brings. What
// needs Pango is a second module, for few drawings have a text that does.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/byte_sink.h"
#include "base/result.h"
#include "drawing/display_list.h"
#include "drawing/font_face.h"
#include "drawing/picture.h"

struct _cairo;

namespace vaxel {

struct DocumentInfo {
  std::string Title;
  // Seconds since 1970; the present time when there is none.
  std::optional<std::int64_t> CreationTime;
};

// A font that is not there, and the one that is used in its place.
struct FontReplacement {
  std::string Wanted, Used;
};

// What came of writing a document.
struct WriteResult {
  Result<> Outcome{};
  // The standard fonts in it that neither are there nor have one of the same widths, faces apart.
  std::vector<FontReplacement> Replaced{};
};

// What the module exports.
struct CairoFunctions {
  // Pictures are decoded by the decoder; without one there can be none.
  WriteResult (*WritePdf)(const DisplayList& list, const DocumentInfo& info, PictureDecoder* decoder,
                          ByteSink& sink);
  // One page (from 0), so many pixels an inch.
  WriteResult (*WritePng)(const DisplayList& list, std::size_t page, double dpi, PictureDecoder* decoder,
                          ByteSink& sink);
};

// A PDF file gives the widths of its glyphs in thousandths of the size, cut off, and Cairo does not count
// what that takes away: a long text would come out short. A step of the baseline that cannot be seen makes it
// state the place anew; every second stretch of so many glyphs is moved by so much of the size.
inline constexpr int PlacedStretch = 4;
inline constexpr double PlacedStep = 0.0012;

// Text in any font of this machine and in any script.
class SystemText : public TextMeasurer {
 public:
  // Draws with the context's source. reach: how far from its origin the context can count, in mm.
  virtual void Draw(_cairo* context, const TextShape& shape, std::string_view text, const FontFace& face,
                    double reach) = 0;
};

// Each loads its module on first use and fails where there is none.
Result<const CairoFunctions*> LoadCairo();
Result<std::unique_ptr<SystemText>> LoadPango();
Result<std::unique_ptr<PictureDecoder>> LoadPixbuf();

}  // namespace vaxel
