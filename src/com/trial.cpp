#include "com/trial.hpp"

#include <array>

#include "com/utf.hpp"
#include "text/text.hpp"

namespace com {

Purpose PurposeOf(std::wstring_view command_line) {
    return text::HasArgument(Narrow(command_line), kTrialSwitch) ? Purpose::kTrial : Purpose::kWork;
}

bool IsTrialStandIn(HWND window) {
    std::array<wchar_t, 32> name{};
    GetClassNameW(window, name.data(), static_cast<int>(name.size()));
    return std::wstring_view(name.data()) == kTrialStandInWindow;
}

} // namespace com
