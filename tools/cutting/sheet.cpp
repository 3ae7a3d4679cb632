#include "tools/cutting/sheet.h"

#include "base/window_and_view.h"
#include "tools/sync_script/pen.h"
#include "tools/sync_script/strip_bands.h"
#include "tools/sync_script/text.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <set>
#include <sstream>
#include <utility>

namespace {

constexpr double kShape = static_cast<double>(kViewHeight) / kViewWidth;
constexpr double kMargin = 16.0;
constexpr double kGap = 8.0;
constexpr double kHead = 56.0; // the page's first still begins below it
constexpr double kHeadline = 36.0;

constexpr auto kOffsetNames = std::to_array<const char*>(
    {"the frame before", "the first that hears it", "5 frames later", "20 frames later"});
static_assert(kOffsetNames.size() == kSheetOffsets.size());

constexpr double kWordsWidth = 226.0; // of the column at the left
constexpr double kMomentWidth = 344.0;
constexpr double kMomentHeight = kMomentWidth * kShape;
constexpr std::size_t kMomentsOnAPage = 10;

constexpr double kFilmWidth = 320.0;
constexpr double kFilmHeight = kFilmWidth * kShape;
constexpr double kCaption = 24.0; // below a still
constexpr std::size_t kFilmColumns = 5;
constexpr std::size_t kFilmRows = 10;

const Type kTitle{24.0, {kTypeColour}, Align::kLeft, true};
const Type kSmall{
    14.5, {kTypeColour, 0.85}
};
const Type kTime{19.0, {kTypeColour}, Align::kLeft, true};
const Type kPlace{
    19.0, {kTypeColour, 0.85},
     Align::kRight, true
};
const Type kWarning{14.5, {0xFF7A4D}, Align::kLeft, true};

std::string placeOf(const Moment& moment)
{
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%d:%02d", moment.order, moment.row);
    return text.data();
}

const char* inWords(Mark mark)
{
    switch (mark) {
    case Mark::kStop:
        return "stop: no note begins or ends";
    case Mark::kUnstruck:
        return "no note begins";
    case Mark::kNone:
        break;
    }
    return "";
}

// Breaks a text into lines that are no wider than `width`, if their words are not.
std::vector<std::string> wrapped(Pen& pen, const std::string& text, double width, const Type& style)
{
    std::vector<std::string> lines;
    std::istringstream words(text);
    for (std::string word; words >> word;) {
        const std::string longer = lines.empty() ? word : lines.back() + ' ' + word;
        if (lines.empty() || pen.widthOf(longer, style) > width) {
            lines.push_back(word);
        } else {
            lines.back() = longer;
        }
    }
    return lines;
}

// One of the pages that so many moments fill.
struct Page {
    std::string name;
    std::string title;
    std::span<const Moment> moments;
};

std::vector<Page> pagesOf(const std::string& prefix, const std::string& title,
                          std::span<const Moment> moments, std::size_t onAPage)
{
    std::vector<Page> pages;
    const std::size_t count = (moments.size() + onAPage - 1) / onAPage;
    for (std::size_t i = 0; i < count; ++i) {
        std::array<char, 32> ending{};
        std::snprintf(ending.data(), ending.size(), "-%02zu.png", i + 1);
        const std::size_t first = i * onAPage;
        pages.push_back(
            {prefix + ending.data(),
             title + "    page " + std::to_string(i + 1) + " of " + std::to_string(count),
             moments.subspan(first, std::min(onAPage, moments.size() - first))});
    }
    return pages;
}

// Draws stills of one folder onto a page.
class Board {
public:
    Board(const Page& page, double width, double height, std::string stillFolder, FrameRate rate)
        : pen(page.name, static_cast<int>(width), static_cast<int>(height)),
          folder_(std::move(stillFolder)), rate_(rate)
    {
        pen.fill({0.0, 0.0, width, height}, {kGroundColour});
        pen.type(page.title, kMargin, kHeadline, kTitle);
    }

    void still(std::int64_t frame, const Box& box)
    {
        const bool isDrawn =
            frame >= 0 &&
            pen.picture(
                folder_ + '/' + stillTime(static_cast<std::uint64_t>(frame), rate_) + ".png", box);
        if (!isDrawn) {
            pen.fill(box, {kTypeColour, 0.05});
        }
    }

    Pen pen;

private:
    std::string folder_;
    FrameRate rate_;
};

void drawWords(Pen& pen, const Moment& moment, double top)
{
    constexpr double kLine = 22.0;
    double baseline = top + kTime.capHeight;
    pen.fill({kMargin, top, 5.0, kMomentHeight}, {sceneColour(moment.scene)});
    const double left = kMargin + 14.0;
    const double width = kWordsWidth - 14.0;
    pen.type(clockTime(moment.sample), left, baseline, kTime);
    pen.type(placeOf(moment), kMargin + kWordsWidth, baseline, kPlace);
    baseline += 4.0;
    for (const std::string& line : wrapped(pen, moment.words, width, kSmall)) {
        baseline += kLine;
        pen.type(line, left, baseline, kSmall);
    }
    pen.type(inWords(moment.mark), left, baseline + kLine, kWarning);
}

std::string drawMomentPage(const Page& page, const std::string& stillFolder, FrameRate rate)
{
    constexpr double kWidth =
        kMargin + kWordsWidth + kSheetOffsets.size() * (kGap + kMomentWidth) + kMargin;
    constexpr double kStep = kMomentHeight + kGap + 4.0;
    Board board(page, kWidth, kHead + 20.0 + kStep * static_cast<double>(page.moments.size()),
                stillFolder, rate);
    const auto leftOf = [](std::size_t column) {
        return kMargin + kWordsWidth + kGap + static_cast<double>(column) * (kMomentWidth + kGap);
    };
    for (std::size_t column = 0; column < kSheetOffsets.size(); ++column) {
        board.pen.type(kOffsetNames[column], leftOf(column), kHead + 8.0, kSmall);
    }
    double top = kHead + 20.0;
    for (const Moment& moment : page.moments) {
        drawWords(board.pen, moment, top);
        const auto first = static_cast<std::int64_t>(frameOf(moment, rate));
        for (std::size_t column = 0; column < kSheetOffsets.size(); ++column) {
            board.still(first + kSheetOffsets[column],
                        {leftOf(column), top, kMomentWidth, kMomentHeight});
        }
        top += kStep;
    }
    board.pen.finish();
    return page.name;
}

std::string drawFilmPage(const Page& page, const std::string& stillFolder, FrameRate rate)
{
    constexpr double kStep = kFilmHeight + kCaption + kGap;
    const std::size_t rows = (page.moments.size() + kFilmColumns - 1) / kFilmColumns;
    Board board(page, 2 * kMargin - kGap + kFilmColumns * (kFilmWidth + kGap),
                kHead + kStep * static_cast<double>(rows), stillFolder, rate);
    for (std::size_t i = 0; i < page.moments.size(); ++i) {
        const Moment& moment = page.moments[i];
        const std::size_t row = i / kFilmColumns;
        const std::size_t column = i % kFilmColumns;
        const Box box{kMargin + static_cast<double>(column) * (kFilmWidth + kGap),
                      kHead + static_cast<double>(row) * kStep, kFilmWidth, kFilmHeight};
        board.still(static_cast<std::int64_t>(frameOf(moment, rate)), box);
        board.pen.fill({box.x, box.bottom(), box.width, 3.0}, {sceneColour(moment.scene)});
        board.pen.type(clockTime(moment.sample) + "   " + placeOf(moment) + "   " + moment.words,
                       box.x, box.bottom() + 20.0, kSmall);
    }
    board.pen.finish();
    return page.name;
}

} // namespace

std::vector<std::uint64_t> framesOnSheet(std::span<const Moment> moments, bool single,
                                         const FrameRange& range, FrameRate rate)
{
    std::set<std::uint64_t> frames;
    for (const Moment& moment : moments) {
        for (const int offset : kSheetOffsets) {
            const auto frame = static_cast<std::int64_t>(frameOf(moment, rate)) + offset;
            if (frame >= 0 && range.has(static_cast<std::uint64_t>(frame)) &&
                (offset == 0 || !single)) {
                frames.insert(static_cast<std::uint64_t>(frame));
            }
        }
    }
    return {frames.begin(), frames.end()};
}

std::vector<std::string> drawMomentPages(const std::string& prefix, const std::string& title,
                                         std::span<const Moment> moments,
                                         const std::string& stillFolder, FrameRate rate)
{
    std::vector<std::string> names;
    for (const Page& page : pagesOf(prefix, title, moments, kMomentsOnAPage)) {
        names.push_back(drawMomentPage(page, stillFolder, rate));
    }
    return names;
}

std::vector<std::string> drawFilmPages(const std::string& prefix, const std::string& title,
                                       std::span<const Moment> moments,
                                       const std::string& stillFolder, FrameRate rate)
{
    std::vector<std::string> names;
    for (const Page& page : pagesOf(prefix, title, moments, kFilmColumns * kFilmRows)) {
        names.push_back(drawFilmPage(page, stillFolder, rate));
    }
    return names;
}
