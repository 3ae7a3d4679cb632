// An image in memory, and the OpenGL texture made from it. Its pixels are laid out as
// image/pixels.h says.
//
// Every error ends the process with a message on standard error and status 0.
#pragma once

#include "image/pixels.h"

#include <cstdint>

struct LoadedImage;

class Bitmap {
public:
    Bitmap() = default;
    Bitmap(const Bitmap&) = delete;
    Bitmap& operator=(const Bitmap&) = delete;
    ~Bitmap() { release(); }

    // Allocates an image of 8, 16, 24 or 32 bits per pixel. Its contents are whatever the memory
    // held; the texture name stays. Pixels that the bitmap already holds are freed first.
    void create(unsigned width, unsigned height, unsigned bpp);

    // Reads a TGA file (image/tga_reader.h) or an HSI RAW one (image/hsi_raw_reader.h) and converts
    // it to `bpp` bits per pixel if it has another depth. 8 and 15 are only for files that have
    // this depth already. An 8-bit file's palette is kept. Pixels that the bitmap already holds are
    // freed first.
    void load(const char* path, unsigned bpp);
    void loadHsiRaw(const char* path, unsigned bpp);

    // Fills the bitmap, which must have 16, 24 or 32 bits per pixel, from `source`, whose pixels
    // have 8 (indices into this bitmap's palette), 15, 16, 24 or 32 bits. Writes nothing if the
    // depths are equal.
    void convertFrom(const std::uint8_t* source, int sourceBpp);

    // Frees the pixels and empties the bitmap. The texture itself lives on.
    void release();

    // Writes the alpha of every pixel: the low 8 bits of 255 * alpha, truncated; nothing is
    // clamped. For 32 bits per pixel only.
    void setAlpha(float alpha);

    // Gives the alpha `a` to every pixel whose colour is exactly (r, g, b). For 32 bits per pixel
    // only.
    void setColourKeyAlpha(std::uint8_t r, std::uint8_t g, std::uint8_t b, std::uint8_t a);

    // Sets every byte of the pixels to 0; leaves an image of 15 bits per pixel as it is.
    void clear();

    // Makes a repeating, linearly filtered texture and uploads the image of 24 or 32 bits per pixel
    // into it. Expects a current context; leaves the texture bound. At 15 bits per pixel the
    // texture has a name but no image.
    void makeTexture();

    // Uploads the whole image again, into its own texture or into `texture`, which has its size and
    // stays bound. For 24 and 32 bits per pixel; 16 is an error, other depths do nothing.
    void updateTexture() const { updateTextureAs(textureName_); }
    void updateTextureAs(unsigned texture) const;

    [[nodiscard]] unsigned getWidth() const { return width_; }
    [[nodiscard]] unsigned getHeight() const { return height_; }
    [[nodiscard]] unsigned getBpp() const { return bpp_; }
    [[nodiscard]] unsigned getTextureName() const { return textureName_; }
    [[nodiscard]] std::uint8_t* getPixels() { return pixels_.get(); }
    [[nodiscard]] const std::uint8_t* getPixels() const { return pixels_.get(); }
    [[nodiscard]] PaletteEntry* getPalette() { return palette_.data(); }
    [[nodiscard]] const PaletteEntry* getPalette() const { return palette_.data(); }
    void setTextureName(unsigned name) { textureName_ = name; }

private:
    void takeOver(LoadedImage image, unsigned bpp);

    Palette palette_{}; // of an image of 8 bits per pixel
    PixelBuffer pixels_;
    std::uint32_t width_ = 0;
    std::uint32_t height_ = 0;
    std::uint32_t bpp_ = 0;
    std::uint32_t state_ = 0; // 0 empty, 5 holds pixels
    std::uint32_t textureName_ = 0;
};
