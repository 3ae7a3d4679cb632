#include "art/pictures/kit/vector_layer.h"

VectorLayer::VectorLayer(int width, int height)
    : surface_(cairo_image_surface_create(CAIRO_FORMAT_A8, width, height), &cairo_surface_destroy),
      pen_(cairo_create(surface_.get()), &cairo_destroy)
{
    cairo_set_antialias(pen(), CAIRO_ANTIALIAS_BEST);
}

void VectorLayer::addType(const std::string& text, double x, double baseline, double capHeight,
                          Weight weight)
{
    Font(weight).addLine(pen(), text, x, baseline, capHeight);
}

GreyPicture VectorLayer::coverage() const
{
    cairo_surface_flush(surface_.get());
    const unsigned char* bytes = cairo_image_surface_get_data(surface_.get());
    const int stride = cairo_image_surface_get_stride(surface_.get());
    GreyPicture mask(cairo_image_surface_get_width(surface_.get()),
                     cairo_image_surface_get_height(surface_.get()));
    mask.fill([&](int x, int y) { return static_cast<float>(bytes[y * stride + x]) / 255.0F; });
    return mask;
}
