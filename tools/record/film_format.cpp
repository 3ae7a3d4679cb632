#include "tools/record/film_format.h"

#include "tools/record/record_error.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <iterator>
#include <sstream>
#include <string_view>

namespace {

constexpr int kDefaultCrf = 18;

// Colours have half the resolution, and their matrix is the one that today's players assume.
constexpr const char* kColours = "-vf scale=out_color_matrix=bt709:out_range=tv,format=";
constexpr const char* kColourNames = "-colorspace bt709 -color_primaries bt709 -color_trc bt709";

// What makes pictures smaller.
struct PictureEncoder {
    std::string_view name;
    const char* format; // of the pixels, and what else is done to the pictures
    const char* options;
    const char* quality; // ffmpeg's option
    int best = 0;        // value of it; a smaller one would mean something else
};

// clang-format off
constexpr std::array kPictureEncoders = {
    // Slower presets would not make smaller files.
    PictureEncoder{"x264", "yuv420p", "-c:v libx264 -preset veryfast", "-crf"},
    PictureEncoder{"x265", "yuv420p", "-c:v libx265 -preset fast -x265-params log-level=error",
                   "-crf"},
    PictureEncoder{"av1", "yuv420p", "-c:v libsvtav1 -preset 8", "-crf", 1},
    PictureEncoder{"vp9", "yuv420p",
                   "-c:v libvpx-vp9 -b:v 0 -row-mt 1 -deadline realtime -cpu-used 4", "-crf"},
    PictureEncoder{"vaapi", "nv12,hwupload",
                   "-vaapi_device /dev/dri/renderD128 -c:v h264_vaapi -rc_mode CQP", "-qp"},
    PictureEncoder{"nvenc", "yuv420p", "-c:v h264_nvenc -preset p5 -rc vbr -b:v 0", "-cq", 1},
};
// clang-format on

constexpr const char* kAac = "-c:a aac -b:a 256k";
constexpr const char* kOpus = "-c:a libopus -b:a 192k";
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
    bool isManyFiles = false;
    bool isOnePicture = false;
    std::string_view encoders = {}; // each followed by a blank; the first one is the usual one
    const char* pictureOptions = "";
    const char* soundOptions = "";
    const char* fileOptions = "";
};

// For other extensions, ffmpeg chooses the format.
// clang-format off
constexpr std::array kKinds = {
    Kind{.extensions = ".mp4 ", .pictures = true, .sound = true,
         .encoders = "x264 x265 av1 vp9 vaapi nvenc ", .soundOptions = kAac, .fileOptions = kMp4},
    Kind{.extensions = ".m4v ", .pictures = true, .sound = true,
         .encoders = "x264 vaapi nvenc ", .soundOptions = kAac, .fileOptions = kMp4},
    Kind{.extensions = ".mov ", .pictures = true, .sound = true,
         .encoders = "x264 x265 vaapi nvenc ", .soundOptions = kAac, .fileOptions = kMp4},
    Kind{.extensions = ".mkv ", .pictures = true, .sound = true,
         .encoders = "x264 x265 av1 vp9 vaapi nvenc ", .soundOptions = kAac},
    Kind{.extensions = ".webm ", .pictures = true, .sound = true,
         .encoders = "vp9 av1 ", .soundOptions = kOpus},
    Kind{.extensions = ".m3u8 .mpd ", .pictures = true, .sound = true, .isManyFiles = true,
         .encoders = "x264 vaapi nvenc ", .soundOptions = kAac},
    Kind{.extensions = ".gif ", .pictures = true, .pictureOptions = kGif},
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

void appendEncoder(std::vector<std::string>& arguments, const Kind& kind,
                   const FilmQuality& quality)
{
    const std::string_view usual = kind.encoders.substr(0, kind.encoders.find(' '));
    const std::string_view name = quality.encoder.empty() ? usual : quality.encoder;
    const auto& encoder = *std::ranges::find(kPictureEncoders, name, &PictureEncoder::name);
    append(arguments, (std::string(kColours) + encoder.format).c_str());
    append(arguments, encoder.options);
    append(arguments, kColourNames);
    arguments.emplace_back(encoder.quality);
    arguments.push_back(std::to_string(std::max(encoder.best, quality.crf.value_or(kDefaultCrf))));
    if (name == "x265" && kind.fileOptions == kMp4) {
        append(arguments, "-tag:v hvc1"); // without it, some players see no pictures
    }
}

void check(const std::filesystem::path& film, const Kind* kind, const FilmQuality& quality)
{
    std::istringstream list(kind != nullptr ? std::string(kind->encoders) : "");
    const std::vector<std::string> encoders{std::istream_iterator<std::string>(list), {}};
    if (quality.crf && encoders.empty()) {
        throw UsageError("--crf is for .mp4, .mov, .mkv and .webm");
    }
    if (quality.encoder.empty() || std::ranges::find(encoders, quality.encoder) != encoders.end()) {
        return;
    }
    std::string message = "--encoder " + quality.encoder + " is not for " + film.string();
    for (const std::string& each : encoders) {
        message.append(&each == encoders.data() ? ", which takes " : ", ").append(each);
    }
    throw UsageError(message);
}

} // namespace

FilmFormat filmFormat(const std::filesystem::path& film, const FilmQuality& quality)
{
    const Kind* const kind = kindOf(film);
    check(film, kind, quality);
    // Elsewhere, % is a letter like others.
    if (kind != nullptr && !kind->sound && hasNumber(film)) {
        return {.pictures = true, .sound = false, .isManyFiles = true};
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
    FilmFormat format{kind->pictures, kind->sound, kind->isManyFiles};
    append(format.pictureOptions, kind->pictureOptions);
    if (!kind->encoders.empty()) {
        appendEncoder(format.pictureOptions, *kind, quality);
    }
    append(format.options, kind->soundOptions);
    append(format.options, kind->fileOptions);
    return format;
}

FilmFormat losslessFormat()
{
    FilmFormat format;
    append(format.pictureOptions, "-c:v libx264rgb -preset ultrafast -qp 0");
    append(format.options, "-c:a flac");
    return format;
}
