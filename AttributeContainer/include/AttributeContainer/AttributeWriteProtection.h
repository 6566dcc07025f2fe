// An observer that keeps an attribute at the value that it has.
#pragma once

#include <AttributeContainer/Attribute.h>
#include <AttributeContainer/Observer.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace QOR::AttributeContainer {

/// Keeps one attribute at the value that it had when the protection began: it refuses a change, and
/// puts the value back should one come through. Of two on one attribute, the one told last wins.
/// Protection ends with the object. What is stored while observing is blocked stays until the
/// attribute tells its observers again.
class QOR_API AttributeWriteProtection : public Observer {
public:
    /// Tells the text of the requested value, or nothing where the change is not to be refused at
    /// once; it is put back then, after the fact.
    using NewValueText = std::function<std::optional<std::string>(Attribute&)>;

    /// Begins a protection, which lasts as long as somebody holds the result. With an empty
    /// callback the object watches nothing.
    static std::shared_ptr<AttributeWriteProtection> create(std::shared_ptr<Attribute> attribute,
                                                            const NewValueText& callback);
    ~AttributeWriteProtection() override;

    Action::ExecReturn changedNotify(Observable& observable, Initiator& initiator) override;
    /// \throws std::bad_function_call when the callback is empty.
    Action::ExecReturn toChangeNotify(Observable& observable, Initiator& initiator) override;
    std::string getName() const override;

private:
    AttributeWriteProtection(const std::shared_ptr<Attribute>& attribute,
                             const NewValueText& callback);
    std::string describe(const std::string& requested) const;

    std::weak_ptr<Attribute> attribute;
    NewValueText newValueText;
    std::string protectedValue;
    bool isRestoring = false;
};

}  // namespace QOR::AttributeContainer
