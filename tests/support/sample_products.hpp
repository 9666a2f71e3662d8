// Products of the simulated session that the action tests walk.
#pragma once

namespace testing_support {

// Five assemblies and 24 parts, with a sub-assembly that stands in it twice.
inline constexpr const char* kSampleProduct = R"(ProductDocument Product1.CATProduct
product Product1
  child "Part 77"
  child "Part 46" times 3
  child Product2.2 times 2
product Product2.2
  child "Part 12" times 2
  child Product3.1
product Product3.1
  child "Part 46" times 4
  child "Part 87" times 4
)";

// The structure text of kSampleProduct.
inline constexpr const char* kSampleText =
    // clang-format off
    "\r\n0\tProduct1"
    "\r\n1\tPart 77\tProduct1"
    "\r\n1\tPart 46\tProduct1"
    "\r\n1\tPart 46\tProduct1"
    "\r\n1\tPart 46\tProduct1"
    "\r\n1\tProduct2.2\tProduct1\tProduct1|||||Product2.2*1*"
    "\r\n2\tPart 12\tProduct1|||||Product2.2*1*"
    "\r\n2\tPart 12\tProduct1|||||Product2.2*1*"
    "\r\n2\tProduct3.1\tProduct1|||||Product2.2*1*\tProduct1|||||Product2.2*1*|||||Product3.1*2*"
    "\r\n3\tPart 46\tProduct1|||||Product2.2*1*|||||Product3.1*2*"
    "\r\n3\tPart 46\tProduct1|||||Product2.2*1*|||||Product3.1*2*"
    "\r\n3\tPart 46\tProduct1|||||Product2.2*1*|||||Product3.1*2*"
    "\r\n3\tPart 46\tProduct1|||||Product2.2*1*|||||Product3.1*2*"
    "\r\n3\tPart 87\tProduct1|||||Product2.2*1*|||||Product3.1*2*"
    "\r\n3\tPart 87\tProduct1|||||Product2.2*1*|||||Product3.1*2*"
    "\r\n3\tPart 87\tProduct1|||||Product2.2*1*|||||Product3.1*2*"
    "\r\n3\tPart 87\tProduct1|||||Product2.2*1*|||||Product3.1*2*"
    "\r\n1\tProduct2.2\tProduct1\tProduct1|||||Product2.2*3*"
    "\r\n2\tPart 12\tProduct1|||||Product2.2*3*"
    "\r\n2\tPart 12\tProduct1|||||Product2.2*3*"
    "\r\n2\tProduct3.1\tProduct1|||||Product2.2*3*\tProduct1|||||Product2.2*3*|||||Product3.1*4*"
    "\r\n3\tPart 46\tProduct1|||||Product2.2*3*|||||Product3.1*4*"
    "\r\n3\tPart 46\tProduct1|||||Product2.2*3*|||||Product3.1*4*"
    "\r\n3\tPart 46\tProduct1|||||Product2.2*3*|||||Product3.1*4*"
    "\r\n3\tPart 46\tProduct1|||||Product2.2*3*|||||Product3.1*4*"
    "\r\n3\tPart 87\tProduct1|||||Product2.2*3*|||||Product3.1*4*"
    "\r\n3\tPart 87\tProduct1|||||Product2.2*3*|||||Product3.1*4*"
    "\r\n3\tPart 87\tProduct1|||||Product2.2*3*|||||Product3.1*4*"
    "\r\n3\tPart 87\tProduct1|||||Product2.2*3*|||||Product3.1*4*";
// clang-format on

inline constexpr const char* kEmptyDrawing = R"(DrawingDocument Drawing1.CATDrawing
sheet Sheet.1
  view "Main View"
)";

} // namespace testing_support
