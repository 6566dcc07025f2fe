// A host copies a whole tree, children too, and the copies watch each other as the originals do.
#include <AttributeContainer/ContainerClass.h>
#include <AttributeContainer/Object.h>
#include <AttributeContainer/ObserverRelation.h>

#include <cstdint>
#include <exception>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

namespace survey {

using namespace QOR::AttributeContainer;

constexpr std::uint64_t tell = 0;  // the action "Notify"

/// One scan of a project.
class Scan : public ContainerClass<Scan, Object, "Scan"> {
public:
    using Block::Block;

    QOR_ATTRIBUTE(6, double, Exposure, 1.0);
};

/// Says which tree it belongs to, and what it hears.
class Display : public ContainerClass<Display, Object, "Display"> {
public:
    using Block::Block;

    Action::ExecReturn changedNotify(Observable& observable, Initiator&) override {
        const auto scan = observable.lookupObject();  // whose value it is
        std::cout << "    " << place() << " hears of the " << observable.getName() << " of "
                  << (scan ? scan->get().getName() : "nobody") << '\n';
        return Action::ExecDone;
    }

private:
    std::string place() const {
        return getParent() ? findRoot()->getName() + inqObjPath().value_or("") : getName();
    }
};

/// The copy of one object and of all below it; all of them are added to `copies`.
std::shared_ptr<Object> copyBelow(const Object& source,
                                  std::vector<std::shared_ptr<Object>>& copies) {
    auto copy = std::static_pointer_cast<Object>(source.duplicate(CreateDeep));
    copies.push_back(copy);
    for (const auto& child : source.getChildren()) {
        // The names are those of one parent already, so nothing has to be tested.
        copy->addChild(copyBelow(*child, copies), AddFlags::SkipNameTest);
    }
    return copy;
}

/// Copies a tree. What the relations inside it lead to is copied with it; a relation that leads out
/// of it leads to the same object as before.
std::shared_ptr<Object> copyTree(const Object& source) {
    // Copying one object puts the relations of its copy in force at once. This scope is around all
    // of that and puts it off: it remembers which object became which, until every copy is there.
    const BlockUpdateObservers scope(nullptr);
    std::vector<std::shared_ptr<Object>> copies;
    auto root = copyBelow(source, copies);
    for (const auto& copy : copies) copy->updateObservers(*scope.getTable());
    return root;
}

std::shared_ptr<Object> makeProject() {
    auto project = Object::create();
    project->name("project");
    for (const char* const name : {"north", "south"}) {
        const auto scan = Scan::create();
        scan->name(name);
        project->addChild(scan, 0);
    }
    const auto display = Display::create();
    display->name("display");
    project->addChild(display, 0);
    return project;
}

Attr<double>& exposureOf(Object& project, const std::string& scan) {
    return std::dynamic_pointer_cast<Scan>(project.inqObject("/" + scan))->Attr_Exposure();
}

void run() {
    const auto project = makeProject();
    const auto desk = Display::create();  // not in the tree
    desk->name("desk");
    const auto display = project->inqObject("/display");
    for (const char* const name : {"north", "south"}) {
        // Relations of a priority of 1 or more, that are not temporary, go with a copy.
        exposureOf(*project, name).addObserver(*display, 1, tell, false);
    }
    exposureOf(*project, "south").addObserver(*desk, 2, tell, false);

    const auto copy = copyTree(*project);
    copy->name("copy");

    for (const auto& tree : {project, copy}) {
        for (const char* const name : {"north", "south"}) {
            std::cout << tree->getName() << '/' << name << " changes\n";
            exposureOf(*tree, name).set(2.0);
        }
    }
}

}  // namespace survey

int main() {
    try {
        survey::run();
        return 0;
    } catch (const std::exception& failure) {
        std::cerr << "copy_tree: " << failure.what() << '\n';
        return 1;
    }
}
