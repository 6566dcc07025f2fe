#include "Telltale.h"

#include "Differences.h"

#include <algorithm>
#include <iostream>
#include <utility>

namespace example {

Telltale::Telltale(std::function<std::uint64_t()> numLeft)
    : Observer(std::nullopt), numLeft(std::move(numLeft)) {}

model::Action::ExecReturn Telltale::changedNotify(model::Observable& observable, Initiator&) {
    const std::string& path = paths[&observable];
    auto note = std::ranges::find(notes, path, &Note::path);
    if (note == notes.end()) note = notes.insert(note, {path, {}});
    note->numLeft.push_back(numLeft());
    return model::Action::ExecDone;
}

void Telltale::watchAll(model::AttrContainer& container, const std::string& path) {
    for (std::uint64_t token = 0; token < container.getNumAttributes(); ++token) {
        const auto attribute = container.getAttribute(token).lock();
        if (!attribute) continue;
        paths[attribute.get()] = path + attribute->getName();
        attribute->addObserver(*this, 1, 0, true);  // priority 1, action 0 "Notify", not stored
    }
    for (std::uint64_t token = 0; token < container.getNumFields(); ++token)
        if (const auto field = container.getField(token).lock())
            watchAll(*field, path + field->getName() + '/');
}

void Telltale::print() const {
    if (notes.empty()) std::cout << "  told: nobody\n";
    for (const Note& note : notes) {
        std::cout << "  told: " << column(note.path, 32) << note.numLeft.size()
                  << (note.numLeft.size() == 1 ? " time, with" : " times, with");
        for (const std::uint64_t left : note.numLeft) std::cout << ' ' << left;
        std::cout << " left\n";
    }
}

}  // namespace example
