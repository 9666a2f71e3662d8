// Whether the person has asked for high contrast, where colours of our own would be none.
#pragma once

#include <windows.h>

namespace win32 {

inline bool IsHighContrast() {
    HIGHCONTRASTW contrast{};
    contrast.cbSize = sizeof contrast;
    return SystemParametersInfoW(SPI_GETHIGHCONTRAST, sizeof contrast, &contrast, 0) != FALSE &&
           (contrast.dwFlags & HCF_HIGHCONTRASTON) != 0;
}

} // namespace win32
