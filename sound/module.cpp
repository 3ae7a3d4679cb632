#include "sound/module.h"

#include <cstddef>
#include <filesystem>
#include <fstream>
#include <map>
#include <new>
#include <string>
#include <system_error>
#include <utility>

namespace {

// Far more than a module has, and far less than a machine's memory.
constexpr std::uintmax_t kMaxFileBytes = std::uintmax_t{64} << 20U;

constexpr int kForEver = -1;

// seek.sync_samples is off, so a jump cuts the sounding notes: with it, the player would work out
// which notes sound at the new place, but the result depends on what was played before.
const std::map<std::string, std::string> kPlayerSettings = {
    {"load.skip_plugins",       "1"},
    {"load.skip_subsongs_init", "1"},
    {"seek.sync_samples",       "0"},
};

SoundError readFile(const char* path, std::vector<std::uint8_t>& bytes)
{
    std::error_code error;
    const std::filesystem::file_status status = std::filesystem::status(path, error);
    if (status.type() == std::filesystem::file_type::not_found) {
        return SoundError::fileNotFound;
    }
    // Checked before the file is opened: opening a pipe would wait for a writer.
    if (status.type() != std::filesystem::file_type::regular) {
        return SoundError::unreadableFile;
    }
    const std::uintmax_t size = std::filesystem::file_size(path, error);
    if (error || size > kMaxFileBytes) {
        return SoundError::unreadableFile;
    }
    bytes.resize(static_cast<std::size_t>(size));
    std::ifstream file(path, std::ios::binary);
    file.read(reinterpret_cast<char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    return file ? SoundError::none : SoundError::unreadableFile;
}

} // namespace

FMUSIC_MODULE::FMUSIC_MODULE(std::span<const std::uint8_t> file, std::vector<ZxxCell> cells)
    : player(file.data(), file.size(), noLog, kPlayerSettings), zxxCells(std::move(cells))
{
    player.set_repeat_count(kForEver);
}

SoundError loadModule(const char* path, std::unique_ptr<FMUSIC_MODULE>& module)
{
    try {
        std::vector<std::uint8_t> file;
        if (const SoundError error = readFile(path, file); error != SoundError::none) {
            return error;
        }
        std::vector<ZxxCell> cells;
        if (const SoundError error = takeZxxCells(file, cells); error != SoundError::none) {
            return error;
        }
        module = std::make_unique<FMUSIC_MODULE>(file, std::move(cells));
        return SoundError::none;
    } catch (const std::bad_alloc&) {
        return SoundError::outOfMemory;
    } catch (const openmpt::exception&) {
        return SoundError::unreadableFile;
    }
}
