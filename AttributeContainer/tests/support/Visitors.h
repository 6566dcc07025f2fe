// Visitors for tests that write down what they meet.
#pragma once

#include <AttributeContainer/Observer.h>
#include <AttributeContainer/Visitor.h>

#include <cstddef>
#include <functional>
#include <limits>
#include <map>
#include <string>
#include <vector>

namespace QOR::AttributeContainer::Testing {

using Log = std::vector<std::string>;
using Result = VisitorCore::VisitResult;

inline constexpr unsigned anyLevel = std::numeric_limits<unsigned>::max();

/// Writes down whom it visits, "-" in front of a visit behind what is below, and answers as it is
/// told for some of these notes.
template <class Element>
class Recorder : public GeneralVisitor<Element&> {
public:
    explicit Recorder(unsigned firstLevel = 0, unsigned maxLevel = anyLevel)
        : GeneralVisitor<Element&>(firstLevel, maxLevel) {}

    Result visit(Element& element) override { return record("", element); }
    Result visitDone(Element& element) override { return record("-", element); }

    /// The notes, each with the level of its visit behind it.
    Log withLevels() const {
        Log log;
        for (std::size_t i = 0; i < visits.size(); ++i)
            log.push_back(visits[i] + std::to_string(levels[i]));
        return log;
    }

    Log visits;
    std::vector<unsigned> levels;
    std::map<std::string, Result> answers;
    std::function<void(Element&)> act = [](Element&) {};

private:
    Result record(const std::string& prefix, Element& element) {
        visits.push_back(prefix + element.getName());
        levels.push_back(this->getHierLevel());
        act(element);
        const auto answer = answers.find(prefix + element.getName());
        return answer != answers.end() ? answer->second : VisitorCore::Continue;
    }
};

/// Writes down the observers that it visits, each with its level behind it, up to one of a name.
class ObserverRecorder : public ObserverVisitor {
public:
    explicit ObserverRecorder(unsigned firstLevel = 0, unsigned maxLevel = anyLevel)
        : ObserverVisitor(firstLevel, maxLevel) {}

    Result visit(Observer& observer) override {
        visits.push_back(observer.getName() + std::to_string(getHierLevel()));
        return observer.getName() == stopAt ? Stop : Continue;
    }

    Log visits;
    std::string stopAt;
};

}  // namespace QOR::AttributeContainer::Testing
