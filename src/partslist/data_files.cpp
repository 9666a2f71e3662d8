#include "partslist/data_files.hpp"

namespace partslist {

std::string DataFile(controls::Form1& form, const std::string& name) {
    return form.ports.files.DataFolder() + "\\" + name;
}

std::string NewestDataFile(controls::Form1& form, const std::string& name) {
    platform::Files& files = form.ports.files;
    std::string path = DataFile(form, name);
    const std::string folder = files.OtherDataFolder();
    if (!folder.empty()) {
        std::string other = folder + "\\" + name;
        if (files.IsNewer(other, path)) {
            return other;
        }
    }
    return path;
}

} // namespace partslist
