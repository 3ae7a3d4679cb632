// sync_script [MODULE] prints the script
#include "tools/sync_script/script.h"
#include "tools/sync_script/sections.h"
#include "tools/sync_script/text.h"

#include <exception>
#include <iostream>
#include <string>

int main(int argc, char** argv)
{
    const std::string module = argc > 1 ? argv[1] : kOwnModule;
    try {
        writeText(std::cout, readScript(module), sectionsOf(module));
    } catch (const std::exception& fault) {
        std::cerr << fault.what() << '\n';
        return 1;
    }
    return 0;
}
