#include <QOR/KeyStore.h>

#include "keystore/OpenKeys.h"
#include "keystore/SystemKeys.h"

#include <cstdint>
#include <cstdlib>

namespace QOR::keystore {

namespace {

// The home platform's form of a descriptor, so that the system takes those made here.
struct SecurityDescriptor {
    std::uint8_t revision;
    std::uint8_t reserved;
    std::uint16_t control;
    void* owner;
    void* group;
    void* systemList;
    void* list;
};

constexpr unsigned currentRevision = 1;
constexpr std::uint16_t listPresent = 4;
constexpr std::uint16_t listDefaulted = 8;
constexpr unsigned zeroed = 64;

}  // namespace

Status RegSetKeySecurity(HKEY key, unsigned long what, void* descriptor) {
    if (!OpenKeys::isOurs(key)) return systemKeys::setSecurity(key, what, descriptor);
    if (!descriptor) return InvalidParameter;
    if (static_cast<SecurityDescriptor*>(descriptor)->revision != currentRevision)
        return UnknownRevision;
    const KeyUse use(key, WriteDac);
    return use.status() == Success ? use.store().checkKey(use.node()) : use.status();
}

int InitializeSecurityDescriptor(void* descriptor, unsigned long revision) {
    if (!descriptor || revision != currentRevision) return 0;
    *static_cast<SecurityDescriptor*>(descriptor) = {currentRevision, 0,       0,      nullptr,
                                                     nullptr,         nullptr, nullptr};
    return 1;
}

int SetSecurityDescriptorDacl(void* descriptor, int present, void* list, int defaulted) {
    auto* const target = static_cast<SecurityDescriptor*>(descriptor);
    if (!target || target->revision != currentRevision) return 0;
    unsigned control = target->control & ~(listPresent | listDefaulted);
    if (present) control |= listPresent;
    if (present && defaulted) control |= listDefaulted;
    target->control = static_cast<std::uint16_t>(control);
    target->list = present ? list : nullptr;
    return 1;
}

void* LocalAlloc(unsigned int flags, unsigned long size) {
    return (flags & zeroed) != 0 ? std::calloc(1, size) : std::malloc(size);
}

void* LocalFree(void* memory) {
    std::free(memory);
    return nullptr;
}

}  // namespace QOR::keystore
