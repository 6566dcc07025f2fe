// An observer that writes down what it is told in a merge.
#pragma once

#include <AttributeContainer/kVAttrContainer.h>

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace example {

namespace model = QOR::AttributeContainer;

/// Notes by attribute how often it was told, and how much was left to do then.
class Telltale : public model::Observer {
public:
    /// \param numLeft is asked at each call: how many differences the merge has still to resolve.
    explicit Telltale(std::function<std::uint64_t()> numLeft);

    std::string getName() const override { return "Telltale"; }
    model::Action::ExecReturn changedNotify(model::Observable& observable,
                                            Initiator& initiator) override;

    /// Watches all attributes of a container and of its fields, under the names that lead to them.
    void watchAll(model::AttrContainer& container, const std::string& path = {});
    /// Prints what it noted, in the order in which it was first told of each.
    void print() const;

private:
    struct Note {
        std::string path;
        std::vector<std::uint64_t> numLeft;  // at each call
    };

    std::function<std::uint64_t()> numLeft;
    std::map<const model::Observable*, std::string> paths;
    std::vector<Note> notes;
};

}  // namespace example
