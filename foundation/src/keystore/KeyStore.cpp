#include <QOR/KeyStore.h>

#include "keystore/OpenKeys.h"
#include "keystore/SystemKeys.h"

#include <QOR/KeyTreeStore.h>

namespace QOR::keystore {

Status RegOpenKeyExW(HKEY root, const wchar_t* subkey, unsigned long options, unsigned long access,
                     HKEY* key) {
    if (!OpenKeys::isOurs(root)) return systemKeys::openKey(root, subkey, options, access, key);
    if (!key) return InvalidParameter;
    *key = nullptr;
    const KeyUse use(root, 0);
    if (use.status() != Success) return use.status();
    if (use.isRoot() && (!subkey || !*subkey)) {
        *key = root;
        return Success;
    }
    KeyTreeStore::Node node;
    const Status status = inqPath(use.store(), use.node(), subkey, node);
    if (status == Success) *key = use.openNode(node, access);
    return status;
}

Status RegCreateKeyW(HKEY root, const wchar_t* subkey, HKEY* key) {
    if (!OpenKeys::isOurs(root)) return systemKeys::createKey(root, subkey, key);
    return RegCreateKeyExW(root, subkey, 0, nullptr, 0, KeyAllAccess, nullptr, key, nullptr);
}

Status RegCreateKeyExW(HKEY root, const wchar_t* subkey, unsigned long reserved, wchar_t* keyClass,
                       unsigned long options, unsigned long access,
                       const SecurityAttributes* security, HKEY* key, unsigned long* disposition) {
    if (!OpenKeys::isOurs(root))
        return systemKeys::createKeyEx(root, subkey, reserved, keyClass, options, access, security,
                                       key, disposition);
    if (!key) return InvalidParameter;
    *key = nullptr;
    const KeyUse use(root, 0);
    if (use.status() != Success) return use.status();
    KeyTreeStore::Node node;
    bool isNew = false;
    const Status status = makePath(use.store(), use.node(), subkey, node, isNew);
    if (status != Success) return status;
    *key = use.openNode(node, access);
    if (disposition) *disposition = isNew ? CreatedNewKey : OpenedExistingKey;
    return Success;
}

Status RegCloseKey(HKEY key) {
    if (!OpenKeys::isOurs(key)) return systemKeys::closeKey(key);
    return OpenKeys::the().close(key);
}

Status RegDeleteKeyW(HKEY key, const wchar_t* subkey) {
    if (!OpenKeys::isOurs(key)) return systemKeys::deleteKey(key, subkey);
    const KeyUse use(key, 0);
    if (use.status() != Success) return use.status();
    if (!subkey) return InvalidParameter;
    KeyTreeStore::Node node;
    const Status status = inqPath(use.store(), use.node(), subkey, node);
    if (status != Success) return status;
    if (node == KeyTreeStore::rootNode) return AccessDenied;
    const Status removed = use.store().rmKey(node);
    const bool isHandleGone = node == use.node();
    // Another program may have been faster, and this handle leads to a key all the same.
    return removed == KeyDeleted && !isHandleGone ? FileNotFound : removed;
}

Store::Store() = default;

Store::~Store() = default;

Status Store::begin() { return NotSupported; }

Status Store::commit() { return NotSupported; }

void Store::rollback() {}

Transaction::Transaction(Store& store)
    : store(store), state(store.begin()), isOpen(state == Success) {}

Transaction::~Transaction() {
    if (isOpen) store.rollback();
}

Status Transaction::commit() {
    if (!isOpen) return state;
    isOpen = false;
    return state = store.commit();
}

KeyTreeStore::KeyTreeStore() = default;

KeyTreeStore::~KeyTreeStore() {
    if (rootKey) OpenKeys::the().dropRoot(rootKey);
}

Status KeyTreeStore::inqPath(Node key, std::span<const std::wstring_view> names, Node& found) {
    found = key;
    for (const std::wstring_view name : names)
        if (const Status status = inqSubkey(found, name, found); status != Success) return status;
    return Success;
}

HKEY KeyTreeStore::root() {
    std::call_once(rootOpened, [this] {
        rootKey = OpenKeys::the().open(weak_from_this(), rootNode, KeyAllAccess, true);
    });
    return rootKey;
}

}  // namespace QOR::keystore
