// Two versions of one scan project: what differs, and how a merge makes them one in each of the
// three ways in which observers can hear of it.
#include "Differences.h"
#include "Project.h"
#include "Telltale.h"

#include <AttributeContainer/AttrContComparer.h>
#include <AttributeContainer/AttrContMerger.h>
#include <AttributeContainer/AttrCountMarkedVisitor.h>

#include <exception>
#include <iostream>
#include <limits>
#include <string>

namespace {

using namespace example;
using model::AttrContainer;
using model::AttrContComparer;
using model::AttrContMerger;

struct Mode {
    const char* name;
    unsigned flags;
};
constexpr Mode modes[] = {
    {"at once", 0},
    {"after the merge", AttrContMerger::TRIGGER_OBSERVERS_AFTER_MERGE_IS_COMPLETE},
    {"nobody is told", AttrContMerger::BLOCK_OBSERVERS},
};

std::uint64_t numMarked(AttrContainer& container) {
    model::AttrCountMarkedVisitor visitor(std::numeric_limits<unsigned>::max());
    container.attributeVisitor(visitor, true);
    return visitor.getNumMarkedAttributes();
}

void print(const AttrContMerger::Result& result) {
    std::cout << "  changed " << result.numChanged << ", unchanged " << result.numUnchanged
              << ", attributes +" << result.numAttributesAdded << " -"
              << result.numAttributesRemoved << ", fields +" << result.numFieldsAdded << " -"
              << result.numFieldsRemoved << '\n';
}

/// Merges the field version into an office version of its own. \return whether they are equal then.
bool mergeIn(const Mode& mode) {
    const Project office = makeOfficeVersion();
    const Project field = makeFieldVersion();
    const auto numLeft = [&] {
        return AttrContComparer(AttrContComparer::allCategories, 0).compare(*office, *field);
    };
    const auto telltale = std::make_shared<Telltale>(numLeft);
    telltale->watchAll(*office);

    // Without the first flag the observers of equal attributes would be told as well.
    AttrContMerger::Result result;
    AttrContMerger::merge(*office, *field,
                          AttrContMerger::ASSIGN_ONLY_CHANGED_VALUES |
                              AttrContMerger::MARK_CHANGED_WITH_AUXILIARY | mode.flags,
                          &result);

    std::cout << "\nmerge, observers: " << mode.name << '\n';
    print(result);
    telltale->print();
    std::cout << "  marked: " << numMarked(*office) << ", differences left: " << numLeft() << '\n';
    return numLeft() == 0;
}

bool run() {
    const Project office = makeOfficeVersion();
    const Project field = makeFieldVersion();
    const auto differences = differencesOf(*office, *field);
    std::cout << column(std::to_string(differences.size()) + " differences", 34)
              << column("office", 18) << "field\n";
    printDifferences(differences);

    // A tolerance is for what both have: nothing that one of them alone has may be counted.
    const AttrContComparer tolerant(AttrContComparer::allCategories,
                                    AttrContComparer::ignoreOnlyInFirst |
                                        AttrContComparer::ignoreOnlyInSecond |
                                        AttrContComparer::withTolerance);
    std::cout << "in what both have, within the tolerance: " << tolerant.compare(*office, *field)
              << '\n';

    bool areEqual = true;
    for (const Mode& mode : modes) areEqual = mergeIn(mode) && areEqual;
    return areEqual;
}

}  // namespace

int main() {
    try {
        return run() ? 0 : 1;
    } catch (const std::exception& failure) {
        std::cerr << "merge_scans: " << failure.what() << '\n';
        return 1;
    }
}
