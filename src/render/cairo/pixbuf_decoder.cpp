// The module that decodes pictures with GdkPixbuf.
#include <gdk-pixbuf/gdk-pixbuf.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>

#include "drawing/picture.h"
#include "resources/text_id.h"

namespace vaxel {
namespace {

struct ObjectDeleter {
  void operator()(gpointer object) const { g_object_unref(object); }
};

struct ErrorDeleter {
  void operator()(GError* error) const { g_error_free(error); }
};

using UniqueError = std::unique_ptr<GError, ErrorDeleter>;
using UniqueLoader = std::unique_ptr<GdkPixbufLoader, ObjectDeleter>;

std::uint32_t Multiplied(std::uint32_t part, std::uint32_t alpha) {
  return (part * alpha + 127) / 255;
}

std::uint32_t PixelOf(const guchar* parts, bool hasAlpha) {
  const std::uint32_t alpha = hasAlpha ? parts[3] : 255;
  return alpha << 24 | Multiplied(parts[0], alpha) << 16 | Multiplied(parts[1], alpha) << 8 |
         Multiplied(parts[2], alpha);
}

// Which rows of a picture have been decoded: the library fills up the others of one that ends too early.
class RowsRead {
 public:
  // What the library calls.
  static void Note(GdkPixbufLoader*, gint, gint y, gint, gint height, RowsRead* rows) {
    rows->first_ = std::min(rows->first_, static_cast<std::size_t>(std::max(y, 0)));
    rows->end_ = std::max(rows->end_, static_cast<std::size_t>(std::max(y + height, 0)));
  }
  // Of a picture that is whole: of some formats the library does not tell.
  static RowsRead All() {
    RowsRead rows;
    rows.first_ = 0;
    rows.end_ = SIZE_MAX;
    return rows;
  }
  bool AreNone() const { return end_ == 0; }
  bool Has(std::size_t row) const { return row >= first_ && row < end_; }

 private:
  std::size_t first_ = SIZE_MAX, end_ = 0;  // BMP files may start at the bottom
};

class PixbufDecoder : public PictureDecoder {
 public:
  Result<> Decode(const Picture& picture, std::vector<std::uint32_t>& pixels) override {
    return Load(picture, [&](const GdkPixbuf& pixbuf, const RowsRead& rows) {
      return CopyPixels(pixbuf, rows, picture, pixels);
    });
  }

  Result<> Check(const Picture& picture) override {
    return Load(picture, [&](const GdkPixbuf& pixbuf, const RowsRead&) -> Result<> {
      const auto width = static_cast<std::uint32_t>(gdk_pixbuf_get_width(&pixbuf));
      const auto height = static_cast<std::uint32_t>(gdk_pixbuf_get_height(&pixbuf));
      if (!FitsPicture(picture, width, height)) return Failure{.Text = TextId::PictureDamaged};
      return {};
    });
  }

 private:
  // What is decoded is given to use, and gone after that.
  template <class Use>
  static Result<> Load(const Picture& picture, Use use) {
    GError* error = nullptr;
    const UniqueLoader loader(gdk_pixbuf_loader_new_with_mime_type(MediaType(picture.Format), &error));
    if (!loader) return MissingLoader(UniqueError(error).get(), picture);
    RowsRead read;
    g_signal_connect(loader.get(), "area-updated", G_CALLBACK(RowsRead::Note), &read);
    const auto* bytes = reinterpret_cast<const guchar*>(picture.Bytes.data());
    const bool written = gdk_pixbuf_loader_write(loader.get(), bytes, picture.Bytes.size(), &error);
    // A JPEG whose end is missing is filled up with grey when it is closed.
    const RowsRead rows = picture.IsCutShort ? read : RowsRead::All();
    // It must be closed either way; the first error is the cause.
    const bool closed = gdk_pixbuf_loader_close(loader.get(), written ? &error : nullptr);
    const UniqueError why(error);
    if ((!closed || !written) && !picture.IsCutShort) return FailureOf(why.get());
    const GdkPixbuf* const pixbuf = gdk_pixbuf_loader_get_pixbuf(loader.get());
    if (!pixbuf || rows.AreNone()) return FailureOf(why.get());
    return use(*pixbuf, rows);
  }

  // The library lacks what pictures of this format need, whatever is in them.
  static Failure MissingLoader(const GError* error, const Picture& picture) {
    return {.Words = error ? error->message : MediaType(picture.Format)};
  }

  static Failure FailureOf(const GError* error) {
    const bool isMemory =
        error && g_error_matches(error, GDK_PIXBUF_ERROR, GDK_PIXBUF_ERROR_INSUFFICIENT_MEMORY);
    return {.Text = isMemory ? TextId::PictureNoMemory : TextId::PictureDamaged};
  }

  static Result<> CopyPixels(const GdkPixbuf& pixbuf, const RowsRead& rows, const Picture& picture,
                             std::vector<std::uint32_t>& pixels) try {
    const auto width = static_cast<std::size_t>(gdk_pixbuf_get_width(&pixbuf));
    const auto height = static_cast<std::size_t>(gdk_pixbuf_get_height(&pixbuf));
    const auto channels = static_cast<std::size_t>(gdk_pixbuf_get_n_channels(&pixbuf));
    const auto stride = static_cast<std::size_t>(gdk_pixbuf_get_rowstride(&pixbuf));
    const guchar* const parts = gdk_pixbuf_read_pixels(&pixbuf);
    pixels.resize(width * height);
    for (std::size_t y = 0; y < height; ++y) {
      if (!rows.Has(y)) continue;
      for (std::size_t x = 0; x < width; ++x) {
        pixels[y * width + x] = PixelOf(parts + y * stride + x * channels, channels == 4);
      }
    }
    const bool isPlaced =
        PlaceFrame(picture, static_cast<std::uint32_t>(width), static_cast<std::uint32_t>(height), pixels);
    if (!isPlaced) return Failure{.Text = TextId::PictureDamaged};
    return {};
  } catch (const std::bad_alloc&) {  // nothing may be thrown into the program
    return Failure{.Text = TextId::PictureNoMemory};
  }
};

}  // namespace
}  // namespace vaxel

extern "C" __attribute__((visibility("default"))) vaxel::PictureDecoder* VaxelPixbuf() {
  return new vaxel::PixbufDecoder;
}
