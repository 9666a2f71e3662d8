// What the desktop tests share.
#pragma once

#include <gtest/gtest.h>

#include "programs.hpp"
#include "win32/resource.h"

namespace driver {

// The samples' gearbox, and what the status line says when it has been walked.
constexpr const char* kProduct = "gearbox-assembly.txt";
constexpr const char* kDrawing = "gearbox-drawing.txt";
constexpr const char* kWalked = "Sestav: 14 Partu: 45";

constexpr Milliseconds kLong{120000}; // for an action that takes many calls

// Columns of the parts list.
constexpr int kQuantity = 2;
constexpr int kSheet = 3;
constexpr int kMaterial = 4;

// The base of every suite: no stored configuration when a test begins.
class DesktopTest : public testing::Test {
  private:
    SettingKeeper setting_;
};

// Puts a structure text into the form by the clipboard and builds the tree from it.
void BuildTree(const DorvakWindow& dorvak, const std::string& structure_text);
// The same, and then the parts list, which stands on its page when this returns.
void FillList(const DorvakWindow& dorvak, const std::string& structure_text, int expected_rows);

// The dialog or box of that title that the program has opened.
HWND WaitForDialog(const DorvakWindow& dorvak, const std::string& title);

// One column of a list, from the top down.
std::vector<std::string> Column(HWND list, int column);
void WaitForColumn(HWND list, int column, const std::vector<std::string>& expected);
// Clicks a row and waits until it is the current one.
void SelectRow(HWND list, int row);

// Texts in one line, each followed by "|".
std::string Joined(const std::vector<std::string>& texts);
// The cells of a row as the text of a drawing holds them: each in double quotes.
std::string QuotedCells(const std::vector<std::string>& cells);

} // namespace driver
