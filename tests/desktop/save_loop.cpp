// SaveLoop.exe FILE EVENT: saves two big lists to FILE in turn until it is killed. Sets the named
// event when it begins.
#include "save_loop.hpp"

#include <windows.h>

#include <array>

#include "com/utf.hpp"
#include "win32/files.hpp"

int main(int argc, char** argv) {
    if (argc != 3) {
        return 2;
    }
    const std::string path = com::FromSystemCodePage(argv[1]);
    const std::array lists{driver::BigList(false), driver::BigList(true)};
    win32::CodePageFiles files;
    const HANDLE begun =
        OpenEventW(EVENT_MODIFY_STATE, FALSE, com::Widen(com::FromSystemCodePage(argv[2])).c_str());
    SetEvent(begun);
    for (bool second = false;; second = !second) {
        files.Write(path, lists[second ? 1 : 0]);
    }
}
