#include "art/music/score/words.h"

#include <charconv>
#include <sstream>

void complain(const std::string& what)
{
    throw LineFault(what);
}

void require(bool holds, const std::string& complaint)
{
    if (!holds) {
        complain(complaint);
    }
}

std::string inQuotes(std::string_view text)
{
    std::string result(1, '"');
    result.append(text).push_back('"');
    return result;
}

Words splitWords(const std::string& text)
{
    std::istringstream stream(text);
    Words words;
    for (std::string word; stream >> word;) {
        words.push_back(word);
    }
    return words;
}

Words splitAt(const std::string& text, char separator)
{
    std::istringstream stream(text);
    Words pieces;
    for (std::string piece; std::getline(stream, piece, separator);) {
        pieces.push_back(piece);
    }
    return pieces;
}

std::optional<int> toNumber(std::string_view text, int base)
{
    int value = 0;
    const char* end = text.data() + text.size();
    const auto [stopped, fault] = std::from_chars(text.data(), end, value, base);
    if (text.empty() || fault != std::errc() || stopped != end) {
        return std::nullopt;
    }
    return value;
}

int readNumber(std::string_view text, int low, int high, const std::string& what, int base)
{
    const std::optional<int> value = toNumber(text, base);
    require(value.has_value(), what + ": " + inQuotes(text) + " is not a number");
    require(*value >= low && *value <= high, what + ": " + inQuotes(text) + " is out of range");
    return *value;
}
