// When two numbers are so near to each other that a comparison forgives the difference.
#pragma once

namespace QOR::AttributeContainer {

class Attribute;

/// Whether two attributes of the same run-time type differ by no more than the tolerance of that
/// type. A component that is not a number is within it whatever the other one is. False for all
/// types that have no tolerance, also for equal values.
bool isWithinTolerance(const Attribute& first, const Attribute& second);

}  // namespace QOR::AttributeContainer
