#include "host/desktop/x_picture.h"

#include <SDL_syswm.h>
#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <dlfcn.h>

#include <algorithm>
#include <bit>
#include <cstring>
#include <vector>

namespace kavo::host {

namespace {

// Beyond that the picture is no clearer, only larger.
constexpr Size largest_picture = {4096, 4096};

// The library is found, not linked: which window system is used is SDL's business.
class XLibrary {
public:
  XLibrary() : handle_(dlopen("libX11.so.6", RTLD_LAZY | RTLD_NOLOAD)) {
    if (handle_ == nullptr)
      return;
    find(get_attributes, "XGetWindowAttributes");
    find(create_context, "XCreateGC");
    find(free_context, "XFreeGC");
    find(create_image, "XCreateImage");
    find(put_image, "XPutImage");
    find(set_foreground, "XSetForeground");
    find(fill, "XFillRectangle");
    find(create_colours, "XCreateColormap");
    find(store_colours, "XStoreColors");
    find(set_colours, "XSetWindowColormap");
    find(free_memory, "XFree");
  }
  ~XLibrary() {
    if (handle_ != nullptr)
      dlclose(handle_);
  }
  XLibrary(const XLibrary&) = delete;
  XLibrary& operator=(const XLibrary&) = delete;

  bool is_whole() const { return handle_ != nullptr && is_whole_; }

  decltype(&XGetWindowAttributes) get_attributes = nullptr;
  decltype(&XCreateGC) create_context = nullptr;
  decltype(&XFreeGC) free_context = nullptr;
  decltype(&XCreateImage) create_image = nullptr;
  decltype(&XPutImage) put_image = nullptr;
  decltype(&XSetForeground) set_foreground = nullptr;
  decltype(&XFillRectangle) fill = nullptr;
  decltype(&XCreateColormap) create_colours = nullptr;
  decltype(&XStoreColors) store_colours = nullptr;
  decltype(&XSetWindowColormap) set_colours = nullptr;
  decltype(&XFree) free_memory = nullptr;

private:
  template<typename Function>
  void find(Function& function, const char* name) {
    function = reinterpret_cast<Function>(dlsym(handle_, name));
    is_whole_ = is_whole_ && function != nullptr;
  }

  void* handle_;
  bool is_whole_ = true;
};

// One component of a colour as the bits of a pixel.
uint32_t component(uint32_t eight_bits, unsigned long mask) {
  if (mask == 0)
    return 0;
  const int shift = std::countr_zero(mask);
  const auto most = static_cast<uint64_t>(mask >> static_cast<unsigned>(shift));
  return static_cast<uint32_t>((eight_bits * most + 127) / 255 << static_cast<unsigned>(shift));
}

// A palette with three bits of red and green and two of blue.
constexpr unsigned long palette_red = 0xE0;
constexpr unsigned long palette_green = 0x1C;
constexpr unsigned long palette_blue = 0x03;

class Picture final : public XPicture {
public:
  Picture(Display* display, ::Window window) : display_(display), window_(window) {
    XWindowAttributes attributes = {};
    if (!x_.is_whole() || x_.get_attributes(display_, window_, &attributes) == 0)
      return;
    visual_ = attributes.visual;
    depth_ = attributes.depth;
    red_ = visual_->red_mask;
    green_ = visual_->green_mask;
    blue_ = visual_->blue_mask;
    context_ = x_.create_context(display_, window_, 0, nullptr);
    if (red_ == 0 || visual_->c_class == DirectColor)
      take_palette();
  }
  ~Picture() override {
    if (context_ != nullptr)
      x_.free_context(display_, context_);
  }
  Picture(const Picture&) = delete;
  Picture& operator=(const Picture&) = delete;

  bool is_ready() const { return context_ != nullptr; }

  void show(const Canvas& canvas, Size window) override {
    const Size most = {std::min(window.width, largest_picture.width),
                       std::min(window.height, largest_picture.height)};
    const Size size = largest_within({canvas.width(), canvas.height()}, most);
    const Area area = {(window.width - size.width) / 2, (window.height - size.height) / 2,
                       size.width, size.height};
    scaled_.resize(static_cast<size_t>(size.width) * static_cast<size_t>(size.height));
    scaler_.draw(canvas, {scaled_.data(), size, size.width});
    blacken_around(area, window);
    put(area);
  }

private:
  // A static one stays as the server made it: its colours are near enough to be told apart.
  void take_palette() {
    if (red_ == 0) {
      red_ = palette_red;
      green_ = palette_green;
      blue_ = palette_blue;
    }
    const bool is_ours_to_fill = visual_->c_class == PseudoColor || visual_->c_class == GrayScale;
    if (!is_ours_to_fill || depth_ != 8)
      return;
    std::vector<XColor> colours(256);
    for (unsigned pixel = 0; pixel < colours.size(); ++pixel) {
      const auto part = [pixel](unsigned long mask) {
        return static_cast<unsigned short>((pixel & mask) * 65535 / mask);
      };
      colours[pixel] = {.pixel = pixel,
                        .red = part(palette_red),
                        .green = part(palette_green),
                        .blue = part(palette_blue),
                        .flags = DoRed | DoGreen | DoBlue,
                        .pad = 0};
    }
    const Colormap map = x_.create_colours(display_, window_, visual_, AllocAll);
    x_.store_colours(display_, map, colours.data(), static_cast<int>(colours.size()));
    x_.set_colours(display_, window_, map);
  }

  void blacken_around(const Area& area, Size window) {
    const int right = area.x + area.width;
    const int below = area.y + area.height;
    blacken({0, 0, window.width, area.y});
    blacken({0, below, window.width, window.height - below});
    blacken({0, area.y, area.x, area.height});
    blacken({right, area.y, window.width - right, area.height});
  }

  void blacken(const Area& area) {
    if (area.width <= 0 || area.height <= 0)
      return;
    x_.set_foreground(display_, context_, 0);
    x_.fill(display_, window_, context_, area.x, area.y, static_cast<unsigned>(area.width),
            static_cast<unsigned>(area.height));
  }

  void put(const Area& area) {
    XImage* image = x_.create_image(display_, visual_, static_cast<unsigned>(depth_), ZPixmap, 0,
                                    nullptr, static_cast<unsigned>(area.width),
                                    static_cast<unsigned>(area.height), 32, 0);
    if (image == nullptr)
      return;
    image->byte_order = std::endian::native == std::endian::little ? LSBFirst : MSBFirst;
    bytes_.resize(static_cast<size_t>(image->bytes_per_line) * static_cast<size_t>(area.height));
    image->data = bytes_.data();
    const int pixel_bytes = image->bits_per_pixel / 8;
    for (int y = 0; y < area.height; ++y)
      convert_row(scaled_.data() + int64_t{y} * area.width, area.width,
                  bytes_.data() + int64_t{y} * image->bytes_per_line, pixel_bytes);
    x_.put_image(display_, window_, context_, image, 0, 0, area.x, area.y,
                 static_cast<unsigned>(area.width), static_cast<unsigned>(area.height));
    x_.free_memory(image);
  }

  void convert_row(const uint32_t* row, int width, char* bytes, int pixel_bytes) const {
    const auto size = static_cast<size_t>(pixel_bytes);
    constexpr bool is_little = std::endian::native == std::endian::little;
    for (int x = 0; x < width; ++x, bytes += size) {
      const uint32_t pixel = component(row[x] >> 16U & 0xFFU, red_) |
                             component(row[x] >> 8U & 0xFFU, green_) |
                             component(row[x] & 0xFFU, blue_);
      const auto* first = reinterpret_cast<const char*>(&pixel);
      std::memcpy(bytes, is_little ? first : first + sizeof pixel - size, size);
    }
  }

  XLibrary x_;
  Display* display_;
  ::Window window_;
  Visual* visual_ = nullptr;
  int depth_ = 0;
  unsigned long red_ = 0; // the bits of a pixel
  unsigned long green_ = 0;
  unsigned long blue_ = 0;
  GC context_ = nullptr;
  Scaler scaler_;
  std::vector<uint32_t> scaled_;
  std::vector<char> bytes_;
};

} // namespace

std::unique_ptr<XPicture> XPicture::in(SDL_Window* window) {
  SDL_SysWMinfo info = {};
  SDL_VERSION(&info.version);
  if (SDL_GetWindowWMInfo(window, &info) == SDL_FALSE || info.subsystem != SDL_SYSWM_X11)
    return nullptr;
  auto picture = std::make_unique<Picture>(info.info.x11.display, // NOLINT(*-union-access)
                                           info.info.x11.window); // NOLINT(*-union-access)
  if (!picture->is_ready())
    return nullptr;
  return picture;
}

} // namespace kavo::host
