#include "tools/record/film_part.h"

#include "tools/record/process.h"
#include "tools/record/record_error.h"

#include <charconv>
#include <limits>
#include <map>
#include <sstream>
#include <string_view>
#include <system_error>

namespace fs = std::filesystem;

namespace {

constexpr const char* kExtension = ".mkv";
constexpr std::uint64_t kNever = std::numeric_limits<std::uint64_t>::max();

// Takes a number, and the letter after it unless that is 0, from the front of `text`.
template <typename Number>
bool take(std::string_view& text, Number& number, char letter)
{
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc()) {
        return false;
    }
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    if (letter != 0) {
        if (!text.starts_with(letter)) {
            return false;
        }
        text.remove_prefix(1);
    }
    return true;
}

// Any file may say anything of itself.
bool isPossible(const PartMark& mark)
{
    return mark.rate.frames > 0 && mark.rate.seconds > 0 && mark.size.width > 0 &&
           mark.size.height > 0 && mark.frames.first < mark.frames.end.value_or(kNever);
}

// As PartMark::text() has written it.
std::optional<PartMark> readMark(std::string_view text)
{
    PartMark mark;
    std::uint64_t end = 0;
    if (!take(text, mark.part.number, '/') || !take(text, mark.part.count, ' ') ||
        !take(text, mark.frames.first, '-')) {
        return std::nullopt;
    }
    if (take(text, end, 0)) {
        mark.frames.end = end;
    }
    if (!text.starts_with(' ')) {
        return std::nullopt;
    }
    text.remove_prefix(1);
    if (!take(text, mark.rate.frames, '/') || !take(text, mark.rate.seconds, ' ') ||
        !take(text, mark.size.width, 'x') || !take(text, mark.size.height, 0)) {
        return std::nullopt;
    }
    mark.arguments = text;
    return isPossible(mark) ? std::optional(mark) : std::nullopt;
}

PartMark markOf(const fs::path& file)
{
    const Outcome outcome = outcomeOf({
        {"ffprobe", "-v", "error", "-show_entries", std::string("format_tags=") + kPartTag, "-of",
         "default=noprint_wrappers=1:nokey=1", "file:" + file.string()}
    });
    const std::string line = outcome.text.substr(0, outcome.text.find('\n'));
    const std::optional<PartMark> mark = outcome.status == 0 ? readMark(line) : std::nullopt;
    if (!mark) {
        throw RecordError(file.string() + " is not a part of a film" +
                          (outcome.status == 0 ? "" : ": " + line));
    }
    return *mark;
}

// The number in the name of a part of `film`, if it is the name of one.
std::optional<PartNumber> numberIn(const fs::path& file, const fs::path& film)
{
    const std::string name = file.filename().string();
    const std::string begin = film.stem().string() + '.';
    std::string_view rest = name;
    PartNumber part;
    if (!rest.starts_with(begin)) {
        return std::nullopt;
    }
    rest.remove_prefix(begin.size());
    constexpr std::string_view kOf = "-of-";
    if (!take(rest, part.number, 0) || !rest.starts_with(kOf)) {
        return std::nullopt;
    }
    rest.remove_prefix(kOf.size());
    const bool isPart = take(rest, part.count, 0) && rest == kExtension;
    return isPart ? std::optional(part) : std::nullopt;
}

// Of how many parts there are some beside the film, and how many.
std::map<int, int> partsBeside(const fs::path& film)
{
    std::map<int, int> found;
    std::error_code error;
    const fs::path folder = film.has_parent_path() ? film.parent_path() : fs::path(".");
    for (const auto& entry : fs::directory_iterator(folder, error)) {
        if (const auto part = numberIn(entry.path(), film)) {
            ++found[part->count];
        }
    }
    return found;
}

// The only number of parts of which there are all, or which is the only one at all.
int countOfParts(const fs::path& film)
{
    const std::map<int, int> found = partsBeside(film);
    if (found.empty()) {
        throw RecordError("there is no " + partFile(film, {1, 2}).string() +
                          " or the like to join");
    }
    std::vector<int> whole;
    for (const auto& [count, parts] : found) {
        if (count == parts) {
            whole.push_back(count);
        }
    }
    if (whole.size() > 1) {
        throw RecordError("there are both " + partFile(film, {1, whole[0]}).string() + " and " +
                          partFile(film, {1, whole[1]}).string() +
                          "; remove the parts that are not meant");
    }
    return whole.empty() ? found.rbegin()->first : whole.front();
}

} // namespace

std::string PartMark::text() const
{
    std::ostringstream text;
    text << part.number << '/' << part.count << ' ' << frames.first << '-';
    if (frames.end) {
        text << *frames.end;
    }
    text << ' ' << rate.frames << '/' << rate.seconds << ' ' << size.width << 'x' << size.height
         << arguments;
    return text.str();
}

fs::path partFile(const fs::path& film, PartNumber part)
{
    fs::path file = film;
    file.replace_extension('.' + std::to_string(part.number) + "-of-" + std::to_string(part.count) +
                           kExtension);
    return file;
}

FrameRange shareOf(PartNumber part, std::uint64_t first, std::uint64_t end)
{
    const auto count = static_cast<std::uint64_t>(part.count);
    const auto number = static_cast<std::uint64_t>(part.number);
    const std::uint64_t frames = end - first;
    return {first + frames * (number - 1) / count, first + frames * number / count};
}

std::vector<FilmPart> findParts(const fs::path& film)
{
    const int count = countOfParts(film);
    std::vector<FilmPart> parts;
    for (int number = 1; number <= count; ++number) {
        const fs::path file = partFile(film, {number, count});
        if (!fs::exists(file)) {
            throw RecordError("part " + std::to_string(number) + " of " + std::to_string(count) +
                              " is missing: there is no " + file.string());
        }
        const PartMark mark = markOf(file);
        const PartMark& one = parts.empty() ? mark : parts.front().mark;
        const auto before = parts.empty() ? mark.frames.first : parts.back().mark.frames.end;
        if (mark.part != PartNumber{number, count} || mark.rate != one.rate ||
            mark.size != one.size || mark.arguments != one.arguments ||
            mark.frames.first != before) {
            throw RecordError(file.string() + " was recorded with other options than the part " +
                              "before it");
        }
        parts.push_back({file, mark});
    }
    return parts;
}
