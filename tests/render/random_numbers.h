#pragma once

#include <algorithm>
#include <cstddef>
#include <random>
#include <vector>

// Pixels or heights by chance, the same each time.
template <class Number>
std::vector<Number> randomNumbers(std::size_t count)
{
    std::vector<Number> numbers(count);
    std::mt19937 random{5};
    std::generate(numbers.begin(), numbers.end(), [&] { return static_cast<Number>(random()); });
    return numbers;
}
