#include "tools/record/frames.h"

#include <gtest/gtest.h>
#include <string>

namespace {

// Takes frames down as "0:paabb ": number, picture, and the letters of its sound, left and right.
struct Assembly {
    std::string text;
    FrameAssembler assembler;

    Assembly(FrameRate rate, std::uint64_t first, bool hasSound = true)
        : assembler(rate, first, hasSound, [this](const Frame& frame) {
              text += std::to_string(frame.number) + ':' +
                      std::string(frame.picture.begin(), frame.picture.end());
              for (const std::int16_t sample : frame.sound) {
                  text += sample == 0 ? '0' : static_cast<char>(sample);
              }
              text += ' ';
          })
    {
    }
    void picture(std::uint64_t frame) { assembler.add({PacketKind::picture, 1, frame}, {'p'}); }
    void sound(std::uint64_t position, const std::string& pairs)
    {
        std::vector<std::uint8_t> bytes;
        for (const char letter : pairs) {
            const auto byte = static_cast<std::uint8_t>(letter);
            bytes.insert(bytes.end(), {byte, 0, byte, 0});
        }
        assembler.add({PacketKind::sound, static_cast<std::uint32_t>(bytes.size()), position},
                      bytes);
    }
};

} // namespace

// At 17640 frames a second a frame has two and a half pairs of samples.
TEST(FrameAssembler, GivesEachFrameExactlyItsSound)
{
    Assembly assembly({17640, 1}, 0);
    assembly.picture(0);
    assembly.sound(0, "x");
    assembly.sound(0, "abc"); // heard again, and ahead
    EXPECT_EQ(assembly.text, "0:paabb ");
    assembly.sound(3, "defgh");
    assembly.picture(1);
    EXPECT_EQ(assembly.text, "0:paabb 1:pccddee ");
    assembly.assembler.add({PacketKind::unseen, 0, 2}, {});
    assembly.picture(3);
    assembly.sound(8, "i");
    EXPECT_EQ(assembly.text, "0:paabb 1:pccddee 2:ffgg ");
    assembly.assembler.finish();
    assembly.assembler.finish();
    EXPECT_EQ(assembly.text, "0:paabb 1:pccddee 2:ffgg 3:phhii00 ");
    EXPECT_EQ(assembly.assembler.seen(), 4);
}

TEST(FrameAssembler, BeginsWithTheFirstWantedFrame)
{
    Assembly heard({17640, 1}, 1);
    heard.picture(0);
    EXPECT_EQ(heard.assembler.seen(), 1);
    heard.sound(2, "cdef");
    heard.picture(1);
    EXPECT_EQ(heard.text, "1:pccddee ");

    Assembly silent({17640, 1}, 1, false);
    silent.picture(0);
    silent.picture(1);
    silent.assembler.finish();
    EXPECT_EQ(silent.text, "1:p ");
}
