#include "tools/record/film_format.h"

#include "tools/record/record_error.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace {

constexpr int kUsualCrf = 18;

// H.264 plays everywhere with colours at half resolution; the matrix is the one that today's
// players take for granted. This preset's files are no larger than those of slower ones.
const std::vector<std::string> kH264 = {"-vf",
                                        "scale=out_color_matrix=bt709:out_range=tv,format=yuv420p",
                                        "-c:v",
                                        "libx264",
                                        "-preset",
                                        "veryfast",
                                        "-c:a",
                                        "aac",
                                        "-b:a",
                                        "256k",
                                        "-colorspace",
                                        "bt709",
                                        "-color_primaries",
                                        "bt709",
                                        "-color_trc",
                                        "bt709"};

struct Kind {
    std::string_view names; // extensions, each with a blank behind it
    bool pictures;
    bool sound;
    bool hasCrf;
    std::vector<std::string> arguments;
};

// What is not here is ffmpeg's to choose.
const std::array kKinds = {
    Kind{".mkv ",                                                       true,  true,  true,  kH264                                              },
    Kind{".mp4 .m4v .mov ",                                             true,  true,  true,
         [] {
             std::vector<std::string> arguments = kH264;
             // The index goes to the front, so that a browser can begin at once. Lengths are told
             // in samples: in the usual milliseconds the sound's would be rounded.
             arguments.insert(arguments.end(),
                              {"-movflags", "+faststart", "-movie_timescale", "44100"});
             return arguments;
         }()                                                                                                                                    },
    Kind{".webm ",                                                      true,  true,  true,  {"-c:v", "libvpx-vp9", "-b:v", "0", "-row-mt", "1"}},
    Kind{".gif .png .apng .jpg .jpeg .webp .bmp .tga .tif .tiff .ppm ", true,  false, false, {}                                                 },
    Kind{".wav .flac .mp3 .ogg .opus .m4a .aac .aiff ",                 false, true,  false, {}                                                 },
};

} // namespace

FilmFormat filmFormat(const std::filesystem::path& film, std::optional<int> crf)
{
    std::string extension = film.extension().string() + ' ';
    std::ranges::transform(extension, extension.begin(), [](unsigned char letter) {
        return static_cast<char>(std::tolower(letter));
    });
    const auto* const kind = std::ranges::find_if(
        kKinds, [&](const Kind& each) { return each.names.find(extension) != std::string::npos; });
    const bool isKnown = kind != kKinds.end() && extension != " ";
    if (crf && !(isKnown && kind->hasCrf)) {
        throw UsageError("--crf is for .mp4, .mov, .mkv and .webm");
    }
    if (!isKnown) {
        return {};
    }
    FilmFormat format{kind->pictures, kind->sound, kind->arguments};
    if (kind->hasCrf) {
        format.arguments.insert(format.arguments.end(),
                                {"-crf", std::to_string(crf.value_or(kUsualCrf))});
    }
    return format;
}
