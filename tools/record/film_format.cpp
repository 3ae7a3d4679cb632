#include "tools/record/film_format.h"

#include "tools/record/record_error.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <sstream>
#include <string_view>

namespace {

constexpr int kDefaultCrf = 18;

// H.264 plays everywhere if colours have half the resolution and the colour matrix is the one that
// today's players assume. Slower presets would not make smaller files.
constexpr const char* kH264 =
    "-vf scale=out_color_matrix=bt709:out_range=tv,format=yuv420p"
    " -c:v libx264 -preset veryfast -colorspace bt709 -color_primaries bt709 -color_trc bt709"
    " -c:a aac -b:a 256k";
constexpr const char* kVp9 =
    "-vf scale=out_color_matrix=bt709:out_range=tv,format=yuv420p"
    " -c:v libvpx-vp9 -b:v 0 -row-mt 1 -deadline realtime -cpu-used 4 -c:a libopus -b:a 192k";
// The index goes to the front, so that a browser can begin to play at once. Durations are counted
// in audio frames, since the usual milliseconds would round the sound's.
constexpr const char* kMp4 = "-movflags +faststart -movie_timescale 44100";
// Players show at most 50 frames a second. Each picture has its own palette, since a common one
// would need all pictures in memory.
constexpr const char* kGif = "-vf fps=fps='min(source_fps,50)',split[a][b];"
                             "[a]palettegen=stats_mode=single[p];[b][p]paletteuse=new=1";

// What files of a kind hold, and ffmpeg's options for their streams and for the file. A single
// picture is not a film and is refused.
struct Kind {
    std::string_view extensions; // each followed by a blank
    bool pictures = false;
    bool sound = false;
    bool hasCrf = false;
    bool isManyFiles = false;
    bool isOnePicture = false;
    const char* streams = "";
    const char* file = "";
};

// For other extensions, ffmpeg chooses the format.
// clang-format off
constexpr std::array kKinds = {
    Kind{.extensions = ".mp4 .m4v .mov ", .pictures = true, .sound = true, .hasCrf = true,
         .streams = kH264, .file = kMp4},
    Kind{.extensions = ".mkv ", .pictures = true, .sound = true, .hasCrf = true, .streams = kH264},
    Kind{.extensions = ".webm ", .pictures = true, .sound = true, .hasCrf = true, .streams = kVp9},
    Kind{.extensions = ".m3u8 .mpd ", .pictures = true, .sound = true, .hasCrf = true,
         .isManyFiles = true, .streams = kH264},
    Kind{.extensions = ".gif ", .pictures = true, .streams = kGif},
    Kind{.extensions = ".apng .webp ", .pictures = true},
    Kind{.extensions = ".png .jpg .jpeg .bmp .tga .tif .tiff .ppm .pgm .pam .sgi .dpx .exr .jp2 .qoi ",
         .isOnePicture = true},
    Kind{.extensions = ".wav .flac .mp3 .ogg .opus .m4a .aac .aiff ", .sound = true},
};
// clang-format on

const Kind* kindOf(const std::filesystem::path& film)
{
    std::string extension = film.extension().string() + ' ';
    std::ranges::transform(extension, extension.begin(), [](unsigned char letter) {
        return static_cast<char>(std::tolower(letter));
    });
    const auto* const kind = std::ranges::find_if(kKinds, [&](const Kind& each) {
        return extension != " " && each.extensions.find(extension) != std::string_view::npos;
    });
    return kind != kKinds.end() ? kind : nullptr;
}

void append(std::vector<std::string>& arguments, const char* words)
{
    std::istringstream stream(words);
    for (std::string word; stream >> word;) {
        arguments.push_back(word);
    }
}

// Whether ffmpeg would put a picture's number into the name, for a %d or %05d in it.
bool hasNumber(const std::filesystem::path& film)
{
    const std::string name = film.filename().string();
    for (std::size_t at = name.find('%'); at != std::string::npos; at = name.find('%', at + 1)) {
        const std::size_t letter = name.find_first_not_of("0123456789", at + 1);
        if (letter != std::string::npos && name[letter] == 'd') {
            return true;
        }
    }
    return false;
}

} // namespace

FilmFormat filmFormat(const std::filesystem::path& film, std::optional<int> crf)
{
    const Kind* const kind = kindOf(film);
    if (crf && (kind == nullptr || !kind->hasCrf)) {
        throw UsageError("--crf is for .mp4, .mov, .mkv and .webm");
    }
    // Elsewhere, % is a letter like others.
    if (kind != nullptr && !kind->sound && hasNumber(film)) {
        return {.pictures = true, .sound = false, .isManyFiles = true, .arguments = {}};
    }
    if (kind != nullptr && kind->isManyFiles &&
        film.filename().string().find('%') != std::string::npos) {
        throw UsageError("-o " + film.string() + ": a film in pieces has no % in its name");
    }
    if (kind == nullptr) {
        return {};
    }
    if (kind->isOnePicture) {
        throw UsageError("-o " + film.string() + " is a single picture: for numbered ones, use " +
                         "frames-%05d" + film.extension().string() + " or the like, or --stills");
    }
    FilmFormat format{kind->pictures, kind->sound, kind->isManyFiles, {}};
    append(format.arguments, kind->streams);
    append(format.arguments, kind->file);
    if (kind->hasCrf) {
        append(format.arguments, ("-crf " + std::to_string(crf.value_or(kDefaultCrf))).c_str());
    }
    return format;
}
