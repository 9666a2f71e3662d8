// Whether the preview is open, and where it stands, from one run to the next.

#include <gtest/gtest.h>

#include "shell/shell.hpp"
#include "tests/support/headless_form.hpp"

namespace {

const char* const kOpenKey = "Lumsek\\Tabulky\\nahled";
const char* const kPlaceKey = "Lumsek\\Tabulky\\nahled_misto";

struct PreviewSetting : testing::Test, testing_support::HeadlessForm {
    [[nodiscard]] std::vector<int> Place() const {
        const controls::Preview& preview = form.preview;
        return {preview.left, preview.top, preview.width, preview.height};
    }
};

TEST_F(PreviewSetting, TheButtonOpensAndClosesItAndStoresThat) {
    app::Form_Load(form);
    EXPECT_FALSE(form.preview.open);
    const std::string status = Status();
    form.Command36.Click();
    EXPECT_TRUE(form.preview.open);
    EXPECT_EQ(settings.stored[kOpenKey], "1");
    form.Command36.Click();
    EXPECT_FALSE(form.preview.open);
    EXPECT_EQ(settings.stored[kOpenKey], "0");
    EXPECT_EQ(Status(), status);
    EXPECT_FALSE(settings.stored.contains(kPlaceKey)) << "it has stood nowhere";
}

TEST_F(PreviewSetting, AStartOpensItWhereItStood) {
    settings.stored[kOpenKey] = "1";
    settings.stored[kPlaceKey] = "-120;40;7000;6000";
    app::Form_Load(form);
    EXPECT_TRUE(form.preview.open);
    EXPECT_EQ(Place(), (std::vector{-120, 40, 7000, 6000}));
    EXPECT_FALSE(form.preview.current_row_only);
}

TEST_F(PreviewSetting, APlaceThatIsNoneIsNotTaken) {
    for (const char* stored : {"", "1;2;3", "1;2;3;4;5", "1;2;x;4", "1;2;0;4", "1;2;3;-4",
                               "1e300;2;3;4", "1;2;3;1e12", ";;;"}) {
        settings.stored[kPlaceKey] = stored;
        shell::LoadPreviewSetting(form);
        EXPECT_EQ(Place(), (std::vector{0, 0, 0, 0})) << stored;
    }
}

TEST_F(PreviewSetting, ClosingStoresThePlaceThatTheNextStartReads) {
    app::Form_Load(form);
    form.Command36.Click();
    form.preview.left = 900;
    form.preview.top = -5;
    form.preview.width = 7050;
    form.preview.height = 7800;
    app::RequestClose(form);
    EXPECT_TRUE(form.unloaded);
    EXPECT_EQ(settings.stored[kPlaceKey], "900;-5;7050;7800");
    EXPECT_EQ(settings.stored[kOpenKey], "1");
    form.preview = {};
    shell::LoadPreviewSetting(form);
    EXPECT_EQ(Place(), (std::vector{900, -5, 7050, 7800}));
    EXPECT_TRUE(form.preview.open);
}

TEST_F(PreviewSetting, ThatItCannotBeStoredIsNoError) {
    app::Form_Load(form);
    settings.broken = true;
    form.Command36.Click();
    EXPECT_TRUE(form.preview.open);
    EXPECT_TRUE(message_boxes.shown.empty());
}

} // namespace
