#include <AttributeContainer/AttributeWriteProtection.h>

#include <AttributeContainer/ActionToken.h>

#include <QOR/Logger.h>

#include <utility>

namespace QOR::AttributeContainer {

namespace {
// Marks the time of a restore, however it ends.
class Restoring {
public:
    explicit Restoring(bool& running) : mark(running) { mark = true; }
    Restoring(const Restoring&) = delete;
    Restoring& operator=(const Restoring&) = delete;
    ~Restoring() { mark = false; }

private:
    bool& mark;
};
}  // namespace

AttributeWriteProtection::AttributeWriteProtection(const std::shared_ptr<Attribute>& attribute,
                                                   const NewValueText& callback)
    : Observer(std::nullopt), attribute(attribute), newValueText(callback) {}

AttributeWriteProtection::~AttributeWriteProtection() = default;

std::shared_ptr<AttributeWriteProtection> AttributeWriteProtection::create(
    std::shared_ptr<Attribute> attribute, const NewValueText& callback) {
    std::shared_ptr<AttributeWriteProtection> protection(
        new AttributeWriteProtection(attribute, callback));
    if (callback && attribute) {
        protection->protectedValue = attribute->getValueString();
        attribute->addPreObserver(*protection, 100, ActionToken::PreNotify, true);
        attribute->addObserver(*protection, 100, ActionToken::Notify, true);
    }
    return protection;
}

std::string AttributeWriteProtection::getName() const { return "AttributeWriteProtection"; }

std::string AttributeWriteProtection::describe(const std::string& requested) const {
    return "Trying to modify write protected attribute value. Original value: " + protectedValue +
           " New requested value: " + requested;
}

Action::ExecReturn AttributeWriteProtection::toChangeNotify(Observable& observable,
                                                            Initiator& initiator) {
    if (isRestoring || (initiator && &initiator->get() == this))
        return Observer::toChangeNotify(observable, initiator);
    const auto self = weak_from_this().lock();  // the callback may let go of this object
    const auto living = attribute.lock();
    if (!living) return Action::ExecDone;
    const auto requested = newValueText(*living);
    if (!requested) return Action::ExecUnchanged;
    Logger::appendLogMsgExt(describe(*requested), 3, __FILE__, __LINE__,
                            "QOR::AttributeContainer::AttributeWriteProtection::toChangeNotify");
    observable.addNotifyInfo(std::make_shared<InfoFailed>(
        QOR_ERROR(WriteProtected, "AttributeWriteProtection::toChangeNotify")));
    return Action::ExecRefused;
}

Action::ExecReturn AttributeWriteProtection::changedNotify(Observable& observable,
                                                           Initiator& initiator) {
    if (isRestoring || (initiator && &initiator->get() == this))
        return Observer::changedNotify(observable, initiator);
    const auto self = shared_from_this();
    const auto living = attribute.lock();
    if (!living) return Action::ExecRefused;
    Logger::appendLogMsgExt(describe(living->getValueString()), 3, __FILE__, __LINE__,
                            "QOR::AttributeContainer::AttributeWriteProtection::changedNotify");
    // With this object as initiator, the restoring change passes its own relations. It does not
    // answer another one that restores meanwhile either, or two with unlike values never end.
    const Restoring restoring(isRestoring);
    ResultPromise noPre;
    ResultPromise noPost;
    living->assignFrom(protectedValue, self, noPre, noPost);
    return Action::ExecRefused;
}

}  // namespace QOR::AttributeContainer
