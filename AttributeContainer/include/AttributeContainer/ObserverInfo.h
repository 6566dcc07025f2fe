// The side information of a running change, as observers leave and find it on the observable.
#pragma once

#include <AttributeContainer/Export.h>

#include <QOR/ErrorCode.h>

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <typeindex>
#include <unordered_map>
#include <utility>

namespace QOR::AttributeContainer {

/// Base of all side information. One of each dynamic type hangs on an observable at a time, and
/// only the thread that hung it there sees it.
class QOR_API ObserverInfo {
public:
    virtual const std::string& getClassName() const;
    static const std::string& getStaticClassName();
    virtual ~ObserverInfo();

    /// Whether the end of the notification drops this info; true until told otherwise.
    bool willExpire() const { return expire; }
    void setExpire(bool value) { expire = value; }

private:
    bool expire = true;
};

/// The infos of one observable, by their dynamic type.
using ObserverInfoMap = std::unordered_map<std::type_index, std::shared_ptr<ObserverInfo>>;

/// The value that an attribute is about to take.
template <class T> class QOR_API NewValueInfo : public ObserverInfo {
public:
    explicit NewValueInfo(const T& value) : value(value) {}
    const T& getValue() const { return value; }

private:
    T value;
};

/// A veto: found on the observable after the pre-observers ran, it stops the change. It is gone
/// when the change returns, unless `setExpire(false)` leaves it there for the caller, who then
/// takes it with `removeNotifyInfo`: one that stays refuses later changes too.
class QOR_API InfoFailed : public ObserverInfo {
public:
    explicit InfoFailed(ErrorPtr error);
    ~InfoFailed() override;
    const std::string& getClassName() const override;
    static const std::string& getStaticClassName();
    const ErrorPtr& getError() const { return error; }

private:
    ErrorPtr error;
};

/// Free text information of a caller's choice.
class QOR_API InfoStringMap : public ObserverInfo {
public:
    InfoStringMap() = default;
    explicit InfoStringMap(std::map<std::string, std::string> infos);
    const std::string& getClassName() const override;
    static const std::string& getStaticClassName();

    /// Adds a text; the value of a key that is there is overwritten.
    template <class Value> void addInfo(const std::string& key, const Value& value) {
        infos.insert_or_assign(key, std::string(value));
    }
    /// \return always a value, an empty text for an unknown key.
    std::optional<std::string> getInfoByKey(const std::string& key) const;
    const std::map<std::string, std::string>& getInfos() const { return infos; }
    void setInfos(std::map<std::string, std::string> newInfos) { infos = std::move(newInfos); }
    std::uint64_t getNumberInfos() const { return infos.size(); }

private:
    std::map<std::string, std::string> infos;
};

}  // namespace QOR::AttributeContainer
