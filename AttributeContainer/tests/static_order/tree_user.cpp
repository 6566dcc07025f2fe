// Builds a tree before main; it goes when the program ends, among the last things that do.

#include "early.h"

#include <AttributeContainer/AttributeContainer.h>

#include <memory>

namespace AC = QOR::AttributeContainer;

namespace {

std::shared_ptr<AC::Object> makeTree() {
    auto root = AC::Object::create();
    const auto child = AC::Object::create();
    child->Event("before main");
    checkEarly(root->addChild(child, 0), "a child can be added");
    return root;
}

const std::shared_ptr<AC::Object> tree = makeTree();
const bool found =
    checkEarly(tree->inqChild("Object") != nullptr, "the child is found by its name");

}  // namespace

bool treeUserIsSound() {
    const auto child = tree->inqChild("Object");
    return child && child->Event() == "before main" && child->getParent() == tree;
}
