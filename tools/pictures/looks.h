// Languages and desktops that the pictures of the windows are taken with.
#pragma once

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace bw::test {

// Values of the setting "Language".
inline constexpr uint32_t kChinese = 40022;
inline constexpr uint32_t kEnglish = 40023;

// The environment of a dark desktop, whose files go to `folder`. Qt reads the colours of a KDE
// desktop out of this file without any part of KDE.
inline std::vector<std::string> DarkDesktop(const std::filesystem::path& folder) {
    std::filesystem::create_directories(folder);
    std::ofstream(folder / "kdeglobals") << "[Colors:Window]\n"
                                            "BackgroundNormal=42,46,50\n"
                                            "ForegroundNormal=252,252,252\n"
                                            "[Colors:Button]\n"
                                            "BackgroundNormal=49,54,59\n"
                                            "ForegroundNormal=252,252,252\n"
                                            "[Colors:View]\n"
                                            "BackgroundNormal=27,30,32\n"
                                            "BackgroundAlternate=35,38,41\n"
                                            "ForegroundNormal=252,252,252\n"
                                            "ForegroundInactive=161,169,177\n"
                                            "ForegroundLink=29,153,243\n"
                                            "[Colors:Selection]\n"
                                            "BackgroundNormal=61,174,233\n"
                                            "ForegroundNormal=252,252,252\n"
                                            "[Colors:Tooltip]\n"
                                            "BackgroundNormal=49,54,59\n"
                                            "ForegroundNormal=252,252,252\n";
    return {"XDG_CURRENT_DESKTOP=KDE", "KDE_FULL_SESSION=true", "KDE_SESSION_VERSION=5",
            "XDG_CONFIG_HOME=" + folder.string(), "XDG_CONFIG_DIRS=" + folder.string()};
}

}  // namespace bw::test
