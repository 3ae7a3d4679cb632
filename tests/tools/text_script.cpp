#include "tests/tools/text_script.h"

#include "tests/support/test_module.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <unistd.h>

std::string pathFor(const std::string& ending)
{
    const std::string test = testing::UnitTest::GetInstance()->current_test_info()->name();
    const std::string name = "kso-" + std::to_string(::getpid()) + "-" + test + ending;
    return (std::filesystem::temp_directory_path() / name).string();
}

Script scriptOf(const std::string& patterns)
{
    return scriptOf(makeModule(6, patterns));
}

Script scriptOf(const XmModule& module)
{
    const std::string path = pathFor(".xm");
    const Bytes bytes = writeXm(module);
    std::ofstream(path, std::ios::binary)
        .write(reinterpret_cast<const char*>(bytes.data()),
               static_cast<std::streamsize>(bytes.size()));
    Script script = readScript(path);
    std::filesystem::remove(path);
    return script;
}
