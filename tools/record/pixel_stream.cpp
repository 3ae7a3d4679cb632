#include "tools/record/pixel_stream.h"

#include <span>

void PixelStream::add(const Frame& frame)
{
    const std::span<const std::uint8_t> picture(frame.picture);
    file_.write({reinterpret_cast<const char*>(picture.data()), picture.size()});
}
