#include <AttributeContainer/Attribute.h>

#include <AttributeContainer/AttributePropagationObserver.h>
#include <AttributeContainer/CachedAttributeInfo.h>
#include <AttributeContainer/kVAttrContainer.h>

#include <utility>

namespace QOR::AttributeContainer {

QOR_THREAD_WORD int detail::tempFlags = 0;

namespace {
void setTempFlag(int bit, bool value) {
    detail::tempFlags = value ? detail::tempFlags | bit : detail::tempFlags & ~bit;
}
}  // namespace

const Attribute::Flags Attribute::nullFlags{};

Attribute::Attribute(const std::optional<std::reference_wrapper<const Attribute>>& source)
    : Observable(source ? std::optional<std::reference_wrapper<const Observable>>{source->get()}
                        : std::nullopt) {}

Attribute::~Attribute() = default;

const std::string& Attribute::getStaticClassName() {
    static const std::string name{"Attribute"};
    return name;
}

const std::string& Attribute::getClassName() const {
    return getStaticClassName();
}

bool Attribute::operator!=(const Attribute& other) const {
    return !operator==(other);
}

void Attribute::touch(const std::shared_ptr<ObservingObject>& initiator,
                      std::vector<NotificationResult>* results) {
    Observable::touch(initiator, results);
}

void Attribute::assignFrom(const std::string&, const std::shared_ptr<ObservingObject>&,
                           ResultPromise& preResults, ResultPromise& postResults) {
    for (ResultPromise* promise : {&preResults, &postResults}) {
        if (*promise) (*promise)->set_value({});
        promise->reset();
    }
}

void Attribute::assignFrom(const std::string& text) {
    ResultPromise noPre;
    ResultPromise noPost;
    assignFrom(text, nullptr, noPre, noPost);
}

std::string Attribute::getValueString() const {
    return "(NULL)";
}

void Attribute::readValueFrom(std::istream&, std::shared_ptr<const ReadContextBase>) {}

std::weak_ptr<Observer> Attribute::getObserver() {
    if (!observer) {
        const auto self = std::static_pointer_cast<Attribute>(shared_from_this());
        observer = std::make_unique<const std::shared_ptr<AttributePropagationObserver>>(
            std::make_shared<AttributePropagationObserver>(self, std::nullopt));
    }
    return *observer;
}

std::optional<std::string> Attribute::inqObjPath() const {
    const Location location = getLocation();
    if (!location) return std::nullopt;
    std::string path = location->get().inqObjPath().value_or(std::string{});
    if (path.empty() || path.back() == '/') return getName();  // at the root too: the bare name
    return path + '/' + getName();
}

std::optional<std::reference_wrapper<const Observer>> Attribute::lookupObject() const {
    const Location location = getLocation();
    if (!location) return std::nullopt;
    return location->get();
}

std::weak_ptr<const ObservingObject> Attribute::inqObserver(
    const std::optional<const std::string>& path) const {
    const Location location = getLocation();
    if (!path || path->empty() || !location) return Observable::inqObserver(path);
    const AttrContainer& container = location->get();
    const char first = path->front();
    if (first == '/' || first == '#') return container.inqObserver(path);
    if (*path == "~") return container.weak_from_this();
    if (path->starts_with("~/")) return container.inqObserver(path->substr(2));
    return Observable::inqObserver(path);
}

// The switches of the thread ------------------------------------------------------------------

int Attribute::getAttributeTempFlags() {
    return detail::tempFlags;
}

void Attribute::setAttributeTempFlags(int flags) {
    detail::tempFlags = flags;
}

bool Attribute::isAnyTempFlagSet() {
    return detail::tempFlags != 0;
}

bool Attribute::isObservingBlocked() {
    return (detail::tempFlags & observingBlocked) != 0;
}

void Attribute::setObservingBlocked(bool value) {
    setTempFlag(observingBlocked, value);
}

bool Attribute::isCachedAttributePending() {
    return (detail::tempFlags & cachedAttributePending) != 0;
}

void Attribute::setIsCachedAttributePending(bool value) {
    setTempFlag(cachedAttributePending, value);
}

BlockObserver::BlockObserver() : didBlock(!Attribute::isObservingBlocked()) {
    if (didBlock) Attribute::setObservingBlocked(true);
}

BlockObserver::~BlockObserver() {
    if (didBlock) Attribute::setObservingBlocked(false);
}

// The two halves of a change -------------------------------------------------------------------

namespace {
using Results = std::vector<Observable::NotificationResult>;

// Runs one half and hands what it answered to the one who waits for it, if anybody does.
template <class Half>
void runFor(ResultPromise& promise, const Half& half) {
    Results results;
    half(promise ? &results : nullptr);
    if (promise) promise->set_value(std::move(results));
    promise.reset();
}
}  // namespace

bool Attribute::runPreHalf(const std::type_info& announced,
                           std::shared_ptr<ObserverInfo> newValue,
                           const std::shared_ptr<ObservingObject>& initiator,
                           ResultPromise& preResults) {
    bool accepted = true;
    runFor(preResults, [&](Results* results) {
        if (newValue)
            accepted = askFirst(announced, std::move(newValue), initiator, results);
    });
    return accepted;
}

void Attribute::askOnly(const std::shared_ptr<ObservingObject>& initiator,
                        ResultPromise& preResults) {
    runFor(preResults, [&](Results* results) { preTouch(initiator, results); });
}

void Attribute::runPostHalf(const std::shared_ptr<ObservingObject>& initiator,
                            ResultPromise& postResults) {
    runFor(postResults, [&](Results* results) { touch(initiator, results); });
}

std::shared_ptr<Attribute> Attribute::lookupCachedAttribute() const {
    const auto info = lookupNotifyInfo(typeid(CachedAttributeInfo));
    if (!info) return nullptr;
    return static_cast<const CachedAttributeInfo&>(*info).getCachedAttribute();
}

std::shared_ptr<Attribute> Attribute::takeCachedAttribute() {
    const std::shared_ptr<const ObserverInfo> info = lookupNotifyInfo(typeid(CachedAttributeInfo));
    if (!info) return nullptr;
    setIsCachedAttributePending(false);
    removeNotifyInfo(info, true);
    return static_cast<const CachedAttributeInfo&>(*info).getCachedAttribute();
}

}  // namespace QOR::AttributeContainer
