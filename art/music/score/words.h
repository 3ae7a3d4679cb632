// The words and numbers of a line, and complaints about them.
#pragma once

#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

using Words = std::vector<std::string>;

// A fault in the line at hand, before the file and the line are known.
class LineFault : public std::runtime_error {
    using std::runtime_error::runtime_error;
};

[[noreturn]] void complain(const std::string& what);
void require(bool holds, const std::string& complaint);

std::string inQuotes(std::string_view text);

Words splitWords(const std::string& text);

// What stands between the separators; an empty last piece is not one.
Words splitAt(const std::string& text, char separator);

std::optional<int> toNumber(std::string_view text, int base);

// A number from `low` to `high`; `what` names it in complaints.
int readNumber(std::string_view text, int low, int high, const std::string& what, int base = 10);
