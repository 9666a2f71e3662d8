#include "shell/data_files.hpp"

#include <algorithm>

namespace shell {

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

std::string WithoutForbiddenCharacters(std::string name) {
    std::ranges::replace_if(
        name,
        [](char c) {
            return static_cast<unsigned char>(c) < ' ' ||
                   std::string_view("\\/:*?\"<>|").find(c) != std::string_view::npos;
        },
        '_');
    return name;
}

void KeepUnreadFile(controls::Form1& form, const std::string& name) {
    platform::Files& files = form.ports.files;
    const std::string path = DataFile(form, name);
    if (form.unread_files.contains(name) && files.Exists(path)) {
        const std::string stem = name.substr(0, name.find_last_of('.'));
        files.Copy(path, DataFile(form, stem + " " + files.DateOf(path) + ".txt"));
    }
    form.unread_files.erase(name);
}

} // namespace shell
