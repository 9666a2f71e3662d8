// "Načtení stromu": the walk over the active product into the structure text.

#include <gtest/gtest.h>

#include "structure/structure.hpp"
#include "tests/support/headless_form.hpp"
#include "tests/support/sample_products.hpp"

namespace {

using testing_support::HeadlessForm;
using testing_support::kSampleProduct;
using testing_support::kSampleText;

struct Walk : testing::Test, HeadlessForm {
    simulator::Session session;

    void Open(std::string_view document) {
        session.LoadDocument("test", document);
        Connect(session);
    }
    void OpenAndWalk(std::string_view document) {
        Open(document);
        form.Command3.Click();
    }
};

TEST_F(Walk, WritesOneLinePerInstance) {
    OpenAndWalk(kSampleProduct);
    EXPECT_EQ(form.Text1.Text(), kSampleText);
    EXPECT_EQ(Status(), "Sestav: 5 Partu: 24");
    EXPECT_FALSE(Busy());
}

TEST_F(Walk, TheFormCarriesTheSampleTextFromTheStart) {
    EXPECT_EQ(form.Text1.Text(), kSampleText);
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
    constexpr std::size_t kInstances = 28;
    // ActiveDocument, Name, Product, PartNumber, Products, Count of the top product
    EXPECT_EQ(session.Log().size(), 4 * kInstances + 6);
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
    events.at_yield = [&](int yield) {
        if (yield == 3) {
            app::RequestClose(form);
        }
    };
    form.Command3.Click();
    EXPECT_EQ(events.yields, 3);
    EXPECT_TRUE(form.unloaded);
    EXPECT_TRUE(settings.stored.contains("Lumsek\\Pantrel\\export"));
    EXPECT_TRUE(message_boxes.shown.empty());
}

TEST_F(Walk, ASecondWalkStartedAtAYieldRunsAndHarmsNothing) {
    Open(kSampleProduct);
    events.at_yield = [&](int yield) {
        if (yield == 2) {
            form.Command3.Click();
        }
    };
    form.Command3.Click();
    EXPECT_FALSE(Busy());
    EXPECT_TRUE(message_boxes.shown.empty());
    events.at_yield = nullptr;
    form.Command3.Click();
    EXPECT_EQ(form.Text1.Text(), kSampleText);
    EXPECT_EQ(Status(), "Sestav: 5 Partu: 24");
}

TEST_F(Walk, KeepsOneReferencePerLevel) {
    OpenAndWalk(kSampleProduct);
    const auto& log = session.Log();
    EXPECT_EQ(std::ranges::count(log, "Product.Products"), 29);
    EXPECT_EQ(std::ranges::count(log, "Products.Count"), 29);
    EXPECT_EQ(std::ranges::count(log, "Product.PartNumber"), 29);
}

// The n-th call fails, for every n: refused, and with the session gone.
TEST_F(Walk, EndsCleanlyWhicheverCallFails) {
    Open(kSampleProduct);
    form.Command3.Click();
    const std::size_t calls = session.Log().size();
    const std::string complete = form.Text1.Text();
    for (std::size_t call = 1; call <= calls; ++call) {
        for (const auto kind : {simulator::FaultKind::kRefused, simulator::FaultKind::kVanished,
                                simulator::FaultKind::kBusy}) {
            SCOPED_TRACE(testing::Message()
                         << "call " << call << " kind " << static_cast<int>(kind));
            HeadlessForm fresh;
            simulator::Session doomed;
            doomed.LoadDocument("test", kSampleProduct);
            fresh.Connect(doomed);
            fresh.form.TreeView1.AddRoot("old", "old", 1);
            doomed.Arm({.call = call, .kind = kind});
            fresh.form.Command3.Click();

            EXPECT_EQ(doomed.Log().size(), call);
            const std::string& text = fresh.form.Text1.Text();
            EXPECT_EQ(complete.substr(0, text.size()), text) << "what was read stays";
            EXPECT_LT(text.size(), complete.size() + (call == calls ? 1 : 0));
            EXPECT_EQ(fresh.form.TreeView1.Count(), 1U) << "the tree is not rebuilt";
            EXPECT_FALSE(fresh.Busy());
            EXPECT_TRUE(fresh.message_boxes.shown.empty());
            const std::string expected = kind == simulator::FaultKind::kVanished
                                             ? "-2147023174 The RPC server is unavailable."
                                         : kind == simulator::FaultKind::kBusy
                                             ? "-2147418111 Call was rejected by callee."
                                             : "-2147467259 The method ";
            EXPECT_EQ(fresh.Status().substr(0, expected.size()), expected);

            fresh.Connect(session); // the next run, with CATIA started again
            fresh.form.Command3.Click();
            EXPECT_EQ(fresh.Status(), "Sestav: 5 Partu: 24");
            EXPECT_EQ(fresh.form.TreeView1.Count(), 29U);
        }
    }
}

} // namespace
