#pragma once

#include <filesystem>

// A new file beside another one, whose name it gets when it is complete: NAME.part.EXTENSION, or
// NAME.part-2.EXTENSION and so on where such a file is there already. So nothing is overwritten,
// and recordings of one name do not meet. Every operation throws RecordError when it fails.
class PartFile {
public:
    // Creates it, empty. Symbolic links are followed, so that the file that a link leads to gets
    // complete, not the link.
    explicit PartFile(const std::filesystem::path& whole);
    PartFile(const PartFile&) = delete;
    PartFile& operator=(const PartFile&) = delete;
    ~PartFile(); // deletes it, unless it was completed or kept

    [[nodiscard]] const std::filesystem::path& path() const { return part_; }

    // Gives it its name, in place of what has it now. Returns the name that was asked for. If that
    // fails, the part stays.
    std::filesystem::path replace();

    // Gives it its name if nothing has it. Returns where it is.
    std::filesystem::path keep();

private:
    std::filesystem::path asked_;
    std::filesystem::path whole_;
    std::filesystem::path part_; // empty: it is no longer ours
};
