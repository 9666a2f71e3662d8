#include "structure/structure.hpp"
#include "structure/structure_text.hpp"

#include <gtest/gtest.h>

namespace {

using structure::LineKind;
using structure::ParseStructureLine;

TEST(ParseStructureLine, ReadsTheThreeKindsOfLines) {
    const auto top = ParseStructureLine("0\tProduct1");
    EXPECT_EQ(top.kind, LineKind::kTop);
    EXPECT_EQ(top.part_number, "Product1");

    const auto leaf = ParseStructureLine("1\tPart 77\tProduct1");
    EXPECT_EQ(leaf.kind, LineKind::kLeaf);
    EXPECT_EQ(leaf.part_number, "Part 77");
    EXPECT_EQ(leaf.parent_path, "Product1");

    const auto assembly = ParseStructureLine("1\tP2\tProduct1\tProduct1|||||P2*1*");
    EXPECT_EQ(assembly.kind, LineKind::kAssembly);
    EXPECT_EQ(assembly.path, "Product1|||||P2*1*");
}

TEST(ParseStructureLine, SkipsLinesOfFewerThanTwoFields) {
    EXPECT_EQ(ParseStructureLine("").kind, LineKind::kNone);
    EXPECT_EQ(ParseStructureLine("0").kind, LineKind::kNone);
}

TEST(ParseStructureLine, ComparesTheFirstFieldAsANumber) {
    EXPECT_EQ(ParseStructureLine("0.0\tx").kind, LineKind::kTop);
    EXPECT_EQ(ParseStructureLine(" 0 \tx").kind, LineKind::kTop);
    EXPECT_EQ(ParseStructureLine("x\ty\tz").kind, LineKind::kMalformed);
    EXPECT_EQ(ParseStructureLine("\ty\tz").kind, LineKind::kMalformed);
}

TEST(ParseStructureLine, ATopLineMayHaveMoreFields) {
    EXPECT_EQ(ParseStructureLine("0\ta\tb\tc").kind, LineKind::kTop);
}

TEST(ParseStructureLine, TwoFieldsBelowTheTopLackAParent) {
    EXPECT_EQ(ParseStructureLine("1\tPart").kind, LineKind::kMalformed);
}

TEST(ParseStructureLine, FiveFieldsAreALeaf) {
    EXPECT_EQ(ParseStructureLine("1\ta\tb\tc\td").kind, LineKind::kLeaf);
}

TEST(StructureLines, AreWrittenAsTheyAreRead) {
    EXPECT_EQ(structure::TopLine("Product1"), "0\tProduct1");
    EXPECT_EQ(structure::LeafLine(3, "Part 46", "P|||||Q*1*"), "3\tPart 46\tP|||||Q*1*");
    EXPECT_EQ(structure::InstancePath("Product1|||||Product2.2*1*", "Product3.1", 2),
              "Product1|||||Product2.2*1*|||||Product3.1*2*");
    EXPECT_EQ(structure::AssemblyLine(1, "P2", "P1", "P1|||||P2*1*"), "1\tP2\tP1\tP1|||||P2*1*");
}

TEST(PastedLines, WholeLinesLoseTheTabsThatASpreadsheetPutsAtTheirEnds) {
    EXPECT_EQ(structure::PastedLines("0\tA\t\t\r\n1\tb\tA\t\r\n"), "0\tA\r\n1\tb\tA\r\n");
    EXPECT_EQ(structure::PastedLines("0\tA\t\t\n1\tb\tA\t\n"), "0\tA\r\n1\tb\tA\r\n");
    EXPECT_EQ(structure::PastedLines("\t\t\n"), "\r\n");
}

TEST(PastedLines, WhatHasNoLineEndStaysAsItIs) {
    EXPECT_EQ(structure::PastedLines("1\tb\t"), "1\tb\t");
    EXPECT_EQ(structure::PastedLines("\t"), "\t");
    EXPECT_EQ(structure::PastedLines(""), "");
    EXPECT_EQ(structure::PastedLines("a\t\n1\tb\t"), "a\r\n1\tb\t");
}

} // namespace
