// The root of everything that takes part in the observer graph.
#pragma once

#include <AttributeContainer/Export.h>

#include <memory>
#include <optional>
#include <string>

namespace QOR::AttributeContainer {

/// What can be named by a path, watched or told: the common base of attributes and containers.
///
/// Every such object lives in a `std::shared_ptr`; relations refer to it weakly.
class QOR_API ObservingObject : public std::enable_shared_from_this<ObservingObject> {
public:
    virtual ~ObservingObject();

    /// The element that `path` names, seen from this object.
    /// \return an empty pointer where the path leads nowhere; that is no error.
    virtual std::weak_ptr<ObservingObject> inqObserver(
        const std::optional<const std::string>& path);
    virtual std::weak_ptr<const ObservingObject> inqObserver(
        const std::optional<const std::string>& path) const;

protected:
    ObservingObject() = default;
    ObservingObject(const ObservingObject&) = delete;
    ObservingObject& operator=(const ObservingObject&) = delete;
};

}  // namespace QOR::AttributeContainer
