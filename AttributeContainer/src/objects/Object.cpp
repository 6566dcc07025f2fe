#include <AttributeContainer/Object.h>

#include <AttributeContainer/FallbackObject.h>

#include "containers/Teardown.h"
#include "containers/UniqueNames.h"

#include <iterator>
#include <utility>

namespace QOR::AttributeContainer {

Object::~Object() {
    for (auto& child : children.removeAll()) releaseInTurn(std::move(child));
}

// The tree ----------------------------------------------------------------------------------------

bool Object::addChild(std::shared_ptr<Object> child, int flags) {
    if (!child) return false;
    // What could not be read must not be lost, whatever the parent would say to it.
    if (!isChildAllowed(child, flags) && !dynamic_cast<FallbackObject*>(child.get())) return false;
    if (!child->isParentAllowed(*this)) return false;
    if (!child->parent.expired()) return false;
    if ((flags & AddFlags::SkipNameTest) == 0) {
        const std::string name = child->getName();
        if (!isNameUnique(name)) {
            if ((flags & AddFlags::MakeNameUnique) == 0) return false;
            [[maybe_unused]] const auto refused = child->setName(generateUniqueName(name));
        }
    }
    children.append(child);
    child->parent = std::static_pointer_cast<Object>(shared_from_this());
    return true;
}

bool Object::rmChild(Object& child, int) {
    const auto place = children.find(child);
    if (place == children.end()) return false;
    detach(place);
    return true;
}

bool Object::rmChild(std::uint64_t index, int) {
    if (index >= children.getNumChildren()) return false;
    const auto place = std::next(children.begin(), static_cast<std::ptrdiff_t>(index));
    if (!*place) return false;
    detach(place);
    return true;
}

void Object::detach(ChildList::Children::const_iterator place) {
    const auto child = children.remove(place);
    if (child->parent.lock().get() == this) child->parent.reset();
    UniqueNames::forget(*this, child->getName());
}

bool Object::isChildAllowed(std::shared_ptr<Object>, int) {
    return true;
}

bool Object::isParentAllowed(Object&) {
    return true;
}

bool Object::holdsNoUnknownData() {
    return true;
}

std::shared_ptr<Object> Object::findRoot() {
    auto root = std::static_pointer_cast<Object>(shared_from_this());
    while (auto above = root->parent.lock()) root = std::move(above);
    return root;
}

std::shared_ptr<const Object> Object::findRoot() const {
    return const_cast<Object*>(this)->findRoot();
}

void Object::nameStored() const {
    const auto above = parent.lock();
    if (!above) return;
    if (const auto former = above->children.nameStored(*this)) {
        UniqueNames::forget(*above, *former);
    } else {
        UniqueNames::forget(*above);
    }
}

// Identity ----------------------------------------------------------------------------------------

uuids::uuid Object::getUuid() {
    if (UUID().is_nil()) UUID(uuids::uuid::generate());
    return UUID();
}

uuids::uuid Object::getUuid() const {
    return getNumHardCodedAttributes() > UUIDToken ? UUID() : uuids::uuid{};
}

void Object::setUuid(const uuids::uuid& uuid) {
    UUID(uuid);
}

ClassVersion Object::getStoredClassVersion() const {
    // Every object that is written is asked; most have never had one.
    const auto numberAt = [this](std::uint64_t token) {
        return static_cast<const Attr<unsigned short>&>(*lookAtAttribute(token)).get();
    };
    ClassVersion version;
    if (getNumHardCodedAttributes() > MajorVersionToken) version.major = numberAt(MajorVersionToken);
    if (getNumHardCodedAttributes() > MinorVersionToken) version.minor = numberAt(MinorVersionToken);
    return version;
}

void Object::setClassVersion(const ClassVersion& version) {
    // Nobody would hear of it.
    if (untouchedTable(MajorVersionToken) && version == getStoredClassVersion()) return;
    if (getNumHardCodedAttributes() > MajorVersionToken)
        MajorVersion(static_cast<unsigned short>(version.major));
    if (getNumHardCodedAttributes() > MinorVersionToken)
        MinorVersion(static_cast<unsigned short>(version.minor));
}

}  // namespace QOR::AttributeContainer
