// "Načtení stromu": the walk over the active product into the structure text.

#include <gtest/gtest.h>

#include "tests/support/action_test.hpp"
#include "tests/support/drawing_samples.hpp"
#include "tests/support/failure_sweep.hpp"
#include "tests/support/sample_products.hpp"

namespace {

using testing_support::HeadlessForm;
using testing_support::kSampleProduct;

constexpr std::size_t kInstances = 28; // in the sample product
// ActiveDocument, Name, Product, PartNumber, Products, Count of the top product; four per instance
constexpr std::size_t kCalls = 6 + 4 * kInstances;

std::string Repeated(int times, const std::string& line) {
    std::string lines;
    for (int i = 0; i < times; ++i) {
        lines += line;
    }
    return lines;
}

// The structure text of the sample product, put together from its products.
std::string SampleText() {
    std::string text =
        "\r\n0\tProduct1\r\n1\tPart 77\tProduct1" + Repeated(3, "\r\n1\tPart 46\tProduct1");
    // In a path every assembly carries how many assemblies were entered before it.
    for (const int entered : {1, 3}) {
        const std::string middle = "Product1|||||Product2.2*" + std::to_string(entered) + "*";
        const std::string lowest = middle + "|||||Product3.1*" + std::to_string(entered + 1) + "*";
        text += "\r\n1\tProduct2.2\tProduct1\t" + middle;
        text += Repeated(2, "\r\n2\tPart 12\t" + middle);
        text.append("\r\n2\tProduct3.1\t").append(middle).append("\t").append(lowest);
        text += Repeated(4, "\r\n3\tPart 46\t" + lowest);
        text += Repeated(4, "\r\n3\tPart 87\t" + lowest);
    }
    return text;
}

struct Walk : testing_support::ActionTest {
    void OpenAndWalk(std::string_view document) {
        Open(document);
        form.Command3.Click();
    }
};

TEST_F(Walk, WritesOneLinePerInstance) {
    OpenAndWalk(kSampleProduct);
    EXPECT_EQ(form.Text1.Text(), SampleText());
    EXPECT_EQ(Status(), "Sestav: 5 Partu: 24");
    EXPECT_FALSE(Busy());
}

TEST_F(Walk, TheFormCarriesTheSampleTextFromTheStart) {
    EXPECT_EQ(form.Text1.Text(), SampleText());
}

TEST_F(Walk, RebuildsTheTreeAtItsEnd) {
    OpenAndWalk(kSampleProduct);
    EXPECT_EQ(form.TreeView1.Count(), 1U + 4U + 24U);
}

TEST_F(Walk, ATopProductWithoutChildrenIsASingleLine) {
    OpenAndWalk("ProductDocument Alone.CATProduct\nproduct Alone\n");
    EXPECT_EQ(form.Text1.Text(), "\r\n0\tAlone");
    EXPECT_EQ(Status(), "Sestav: 1 Partu: 0");
    EXPECT_EQ(form.TreeView1.Count(), 1U);
}

TEST_F(Walk, TwoInstancesOfOneSubAssemblyDifferInTheOrdinalOnly) {
    OpenAndWalk("ProductDocument a.CATProduct\nproduct A\n child B times 2\nproduct B\n child c\n");
    EXPECT_EQ(form.Text1.Text(), "\r\n0\tA"
                                 "\r\n1\tB\tA\tA|||||B*1*\r\n2\tc\tA|||||B*1*"
                                 "\r\n1\tB\tA\tA|||||B*2*\r\n2\tc\tA|||||B*2*");
}

TEST_F(Walk, ThreeInstancesOfOnePartAreThreeIdenticalLines) {
    OpenAndWalk("ProductDocument a.CATProduct\nproduct A\n child Hřídel times 3\n");
    EXPECT_EQ(form.Text1.Text(), "\r\n0\tA\r\n1\tHřídel\tA\r\n1\tHřídel\tA\r\n1\tHřídel\tA");
}

TEST_F(Walk, AnExtensionInLowerCaseLettersIsAccepted) {
    OpenAndWalk("ProductDocument a.catproduct\nproduct A\n");
    EXPECT_EQ(Status(), "Sestav: 1 Partu: 0");
}

TEST_F(Walk, AnnouncesEveryChildAndYieldsOncePerAssembly) {
    OpenAndWalk(
        "ProductDocument a.CATProduct\nproduct A\n child B\n child d\nproduct B\n child c\n");
    EXPECT_EQ(messages, (std::vector<std::string>{"Zjistuju spusteni Catie", "Cekam na Catii",
                                                  "Product: A Part: B", "Product: B Part: c",
                                                  "Product: A Part: d", "Sestav: 2 Partu: 2"}));
    EXPECT_EQ(events.yields, 2);
}

TEST_F(Walk, WithoutACatiaWindowNothingHappensBeyondTheDetection) {
    Open(kSampleProduct);
    desktop.titles = {"Notepad"};
    form.Text1.SetText("kept");
    form.Command3.Click();
    EXPECT_EQ(Status(), "Zjistuju spusteni Catie");
    EXPECT_EQ(form.Text1.Text(), "kept");
    EXPECT_TRUE(session.Log().empty());
    EXPECT_EQ(servers.obtained, 0);
}

TEST_F(Walk, AnActiveDocumentThatIsNoAssemblyLeavesTheTextEmptyAndTheTreeAsItWas) {
    Open(kSampleProduct);
    form.Command3.Click();
    session.LoadDocument("drawing", testing_support::kEmptyDrawing);
    form.Command3.Click();
    EXPECT_EQ(Status(), "Neni aktivni CATProduct");
    EXPECT_EQ(form.Text1.Text(), "");
    EXPECT_EQ(form.TreeView1.Count(), 29U);
    EXPECT_FALSE(Busy());
}

TEST_F(Walk, ASessionThatCannotBeObtainedIsReportedAndThePointerIsNormal) {
    Open(kSampleProduct);
    servers.session = nullptr;
    form.Command3.Click();
    EXPECT_EQ(Status(), "429 ActiveX component can't create object");
    EXPECT_FALSE(Busy());
}

TEST_F(Walk, NoOpenDocumentIsReported) {
    Open(kSampleProduct);
    session.CloseAllDocuments();
    form.Command3.Click();
    EXPECT_EQ(Status(), "-2147467259 The method ActiveDocument failed");
}

TEST_F(Walk, ShowsTheHourglassWhileItRuns) {
    Open(kSampleProduct);
    bool busy = true;
    session.before_call = [&](const std::string&) { busy = busy && Busy(); };
    form.Command3.Click();
    EXPECT_TRUE(busy);
}

TEST_F(Walk, TakesFourCallsPerInstanceAndAConstant) {
    OpenAndWalk(kSampleProduct);
    EXPECT_EQ(session.Log().size(), kCalls);
}

TEST_F(Walk, AnErrorInsideLeavesTheDepthAndTheNextWalkStartsFromThere) {
    Open("ProductDocument a.CATProduct\nproduct A\n child B\nproduct B\n child c\n");
    // The eleventh call asks for B's only child.
    session.Arm({.call = 11});
    form.Command3.Click();
    EXPECT_EQ(session.Log().back(), "Products.Item(1)");
    EXPECT_EQ(Status(), "-2147467259 The method Item failed");
    EXPECT_EQ(form.Text1.Text(), "\r\n0\tA\r\n1\tB\tA\tA|||||B*1*");
    EXPECT_EQ(form.TreeView1.Count(), 0U);
    EXPECT_EQ(form.Uroven, 2);
    EXPECT_FALSE(Busy());

    form.Command3.Click();
    EXPECT_EQ(form.Text1.Text(), "\r\n0\tA\r\n3\tB\tA\tA|||||B*1*\r\n4\tc\tA|||||B*1*");
    EXPECT_EQ(Status(), "Sestav: 2 Partu: 1");
    EXPECT_EQ(form.Uroven, 2);
}

TEST_F(Walk, TheWindowClosedMeanwhileEndsItAtTheNextYieldAndThenCloses) {
    Open(kSampleProduct);
    events.at_yield[3] = [&] { app::RequestClose(form); };
    form.Command3.Click();
    EXPECT_EQ(events.yields, 3);
    EXPECT_TRUE(form.unloaded);
    EXPECT_TRUE(settings.stored.contains("Lumsek\\Pantrel\\export"));
    EXPECT_TRUE(message_boxes.shown.empty());
}

TEST_F(Walk, PressedAgainWhileItRunsItGoesOnAloneAndNothingIsCountedTwice) {
    Open(kSampleProduct);
    for (const int yield : {1, 2, 4}) {
        events.at_yield[yield] = [&] { form.Command3.Click(); };
    }
    form.Command3.Click();
    EXPECT_EQ(form.Text1.Text(), SampleText());
    EXPECT_EQ(Status(), "Sestav: 5 Partu: 24");
    EXPECT_EQ(form.Uroven, 0);
    EXPECT_FALSE(Busy());
    EXPECT_TRUE(message_boxes.shown.empty());
}

TEST_F(Walk, WhatIsTypedIntoItsTextMeanwhileDoesNotGetIntoTheProduct) {
    Open(kSampleProduct);
    events.at_yield[2] = [&] { form.Text1.UserChange("typed" + form.Text1.Text()); };
    events.at_yield[3] = [&] { form.Command5.Click(); };
    form.Command3.Click();
    EXPECT_EQ(form.Text1.Text(), SampleText());
    EXPECT_EQ(form.TreeView1.Count(), 1U + 4U + 24U);
}

TEST_F(Walk, AnErrorAtTheTopProductsChildrenLeavesTheDepthRaised) {
    Open(kSampleProduct);
    session.Arm({.call = 5}); // Products of the top product
    form.Command3.Click();
    EXPECT_EQ(session.Log().back(), "Product.Products");
    EXPECT_EQ(form.Uroven, 1);
}

TEST_F(Walk, TheSummaryStandsAlsoWhereLinesFindNoPlaceInTheTree) {
    // A tab in a part number makes a field too many: its line and its child's find no parent.
    Open("ProductDocument a.CATProduct\nproduct A\n child \"x\ty\"\n child b\nproduct \"x\ty\"\n "
         "child c\n");
    form.Command3.Click();
    EXPECT_EQ(Status(), "Sestav: 2 Partu: 2");
    EXPECT_EQ(form.StatusBar1.ShownExplanation().text,
              "Ve stromu chybí 2 řádky struktury, první je řádek 3: neznámý nadřízený, "
              "opakovaná cesta nebo chybějící pole.");
}

TEST_F(Walk, KeepsOneReferencePerLevel) {
    OpenAndWalk(kSampleProduct);
    const auto& calls = session.Log();
    EXPECT_EQ(std::ranges::count(calls, "Product.Products"), 29);
    EXPECT_EQ(std::ranges::count(calls, "Products.Count"), 29);
    EXPECT_EQ(std::ranges::count(calls, "Product.PartNumber"), 29);
}

TEST_F(Walk, EndsCleanlyWhicheverCallFails) {
    testing_support::Sweep({
        .button = &controls::Form1::Command3,
        .document = kSampleProduct,
        .fewest_calls = kCalls,
        .prepare = [](HeadlessForm& headless) { headless.form.TreeView1.AddRoot("old", "old", 1); },
        .after_failure =
            [](const HeadlessForm& complete, HeadlessForm& failed, const simulator::Fault& fault) {
                testing_support::ExpectErrorShown(failed, fault.kind);
                const std::string& text = failed.form.Text1.Text();
                const std::string& whole = complete.form.Text1.Text();
                EXPECT_TRUE(whole.starts_with(text)) << "what was read stays";
                EXPECT_LT(text.size(), whole.size() + (fault.call == kCalls ? 1 : 0));
                EXPECT_EQ(failed.form.TreeView1.Count(), 1U) << "the tree is not rebuilt";
                EXPECT_FALSE(failed.Busy());
            },
        .after_next_run =
            [](const HeadlessForm&, const HeadlessForm& next) {
                EXPECT_EQ(next.Status(), "Sestav: 5 Partu: 24");
                EXPECT_EQ(next.form.TreeView1.Count(), 1 + kInstances);
            },
    });
}

} // namespace
