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

} // namespace testing_support
