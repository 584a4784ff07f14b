#include "chartbook/png.hpp"

#include <png.h>
#include <zlib.h>

#include <array>
#include <bit>
#include <csetjmp>
#include <cstdint>
#include <stdexcept>
#include <vector>

namespace quintara::chartbook {
namespace {

/// The picture's pixels as positions in a list of its colours.
class Palette {
 public:
  static constexpr std::size_t kMost = 256;

  explicit Palette(const Raster& raster) {
    const auto width = static_cast<std::size_t>(raster.deviceWidth());
    pixels_.resize(width * static_cast<std::size_t>(raster.deviceHeight()));
    auto* out = pixels_.data();
    const auto* row = reinterpret_cast<const std::uint8_t*>(raster.pixels());
    for (int y = 0; y < raster.deviceHeight() && fits_; ++y, row += raster.stride()) {
      out = addRow(reinterpret_cast<const std::uint32_t*>(row), width, out);
    }
  }

  /// Whether there are not too many colours; the rest is of use only then.
  [[nodiscard]] bool fits() const { return fits_; }
  [[nodiscard]] const std::vector<png_color>& colours() const { return colours_; }
  [[nodiscard]] const std::uint8_t* row(std::size_t y, std::size_t width) const {
    return pixels_.data() + y * width;
  }

 private:
  /// A few hundred places for a few dozen colours: the first one tried is nearly always it.
  struct Place {
    std::uint32_t pixel = 0;  ///< 0, without the unused byte's ones, is no pixel
    std::uint8_t index = 0;
  };

  std::uint8_t* addRow(const std::uint32_t* pixels, std::size_t width, std::uint8_t* out) {
    std::uint32_t last = 0;
    std::uint8_t index = 0;
    for (std::size_t x = 0; x < width; ++x) {
      if (pixels[x] != last) {
        last = pixels[x];
        index = indexOf(last);
      }
      *out++ = index;
    }
    return out;
  }

  std::uint8_t indexOf(std::uint32_t pixel) {
    constexpr std::uint32_t kScatter = 0x9E3779B1U;
    for (std::uint32_t at = pixel * kScatter >> 22U;; ++at) {
      Place& place = places_[at % places_.size()];
      if (place.pixel == pixel) {
        return place.index;
      }
      if (place.pixel == 0) {
        return add(pixel, place);
      }
    }
  }

  std::uint8_t add(std::uint32_t pixel, Place& place) {
    if (colours_.size() == kMost) {
      fits_ = false;
      return 0;
    }
    place = {pixel, static_cast<std::uint8_t>(colours_.size())};
    const auto channel = [&](unsigned shift) { return static_cast<png_byte>(pixel >> shift); };
    colours_.push_back({channel(16), channel(8), channel(0)});
    return place.index;
  }

  std::vector<std::uint8_t> pixels_;
  std::vector<png_color> colours_;
  std::array<Place, 1024> places_{};
  bool fits_ = true;
};

void append(png_structp png, png_bytep bytes, png_size_t count) {
  static_cast<std::string*>(png_get_io_ptr(png))->append(reinterpret_cast<char*>(bytes), count);
}

void nothing(png_structp /*png*/) {}

/// Long runs of one colour are all there is to find: looking for no more takes half the time.
void setFast(png_structp png) {
  png_set_check_for_invalid_index(png, 0);  // they come from the list itself
  png_set_compression_level(png, 1);
  png_set_compression_strategy(png, Z_RLE);
  png_set_filter(png, 0, PNG_FILTER_NONE);
  constexpr std::size_t kBuffer = std::size_t{1} << 16U;
  png_set_compression_buffer_size(png, kBuffer);
}

void writeRows(png_structp png, png_infop info, const Raster& raster, const Palette& palette) {
  const auto width = static_cast<png_uint_32>(raster.deviceWidth());
  const auto height = static_cast<png_uint_32>(raster.deviceHeight());
  const int type = palette.fits() ? PNG_COLOR_TYPE_PALETTE : PNG_COLOR_TYPE_RGB;
  png_set_IHDR(png, info, width, height, 8, type, PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT,
               PNG_FILTER_TYPE_DEFAULT);
  if (palette.fits()) {
    png_set_PLTE(png, info, palette.colours().data(), static_cast<int>(palette.colours().size()));
  }
  png_write_info(png, info);
  if (!palette.fits()) {
    // A pixel's bytes in memory: blue first, or the unused one.
    if (std::endian::native == std::endian::little) {
      png_set_bgr(png);
      png_set_filler(png, 0, PNG_FILLER_AFTER);
    } else {
      png_set_filler(png, 0, PNG_FILLER_BEFORE);
    }
  }
  const auto* row = reinterpret_cast<const std::uint8_t*>(raster.pixels());
  for (png_uint_32 y = 0; y < height; ++y, row += raster.stride()) {
    png_write_row(png, palette.fits() ? palette.row(y, width) : row);
  }
  png_write_end(png, info);
}

/// The library jumps out of its errors: nothing here may have a destructor.
bool encode(const Raster& raster, const Palette& palette, std::string& file) {
  png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
  png_infop info = png == nullptr ? nullptr : png_create_info_struct(png);
  if (info == nullptr || setjmp(png_jmpbuf(png)) != 0) {
    png_destroy_write_struct(&png, &info);
    return false;
  }
  png_set_write_fn(png, &file, append, nothing);
  setFast(png);
  writeRows(png, info, raster, palette);
  png_destroy_write_struct(&png, &info);
  return true;
}

}  // namespace

std::string pngOf(const Raster& raster) {
  const Palette palette(raster);
  std::string file;
  if (!encode(raster, palette, file)) {
    throw std::runtime_error("the picture cannot be encoded");
  }
  return file;
}

}  // namespace quintara::chartbook
