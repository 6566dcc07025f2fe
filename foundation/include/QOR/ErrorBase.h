// The error object: where a failure happened, what is known about it, and what caused it.
#pragma once

#include <QOR/Export.h>
#include <QOR/Uuid.h>

#include <any>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace QOR::ErrorHandling {

/// The part of an error that does not depend on its code.
///
/// Owns its texts, its infos and copies of its reasons. One thread at a time; different errors can
/// be made and used on different threads at once.
class QOR_API ErrorBase {
public:
    using Infos = std::map<std::string, std::any>;
    using Reasons = std::vector<std::shared_ptr<const ErrorBase>>;

    virtual ~ErrorBase();

    /// The place where the error was made, in the form "file:line".
    std::string getLocation() const;

    /// The error's own identifier in the textual form of a uuid. Every new error has a fresh one;
    /// a copy keeps that of its original.
    std::string getUuid() const;

    /// Puts a sentence for people in place of the former one.
    void setDescription(const std::string& text);

    /// The description; empty until one is set.
    std::optional<std::string> getDescription() const;

    /// Adds the entries to the infos; a key that is there already takes the new value.
    void addInfos(const Infos& newInfos);

    /// What is known about the failure, by key. The reference lasts as long as the error.
    const Infos& getInfos() const;

    /// Adds a copy of an error that led to this one, with the reasons that it has itself.
    void addReason(const ErrorBase& reason);

    /// What led to this error, in the order of adding. The reference lasts as long as the error. A
    /// clone shares the reasons of its original: they cannot change any more.
    const Reasons& getReasons() const;

protected:
    /// An error made at this place. Both are copied; a null `fileName` counts as an unknown one.
    ErrorBase(const char* fileName, int lineNumber);

    ErrorBase(const ErrorBase&);
    ErrorBase& operator=(const ErrorBase&) = delete;

private:
    /// A copy of the whole error, so that a reason keeps its code.
    virtual std::shared_ptr<const ErrorBase> copy() const = 0;

    std::string file;
    int line;
    uuids::uuid id;
    std::optional<std::string> description;
    Infos infos;
    Reasons reasons;
};

/// Answers whether a code stands for a warning, by the free function that belongs to the code's
/// type. It stands outside of the class since a member of the same name would hide that function.
template <class E> bool isWarningCode(const E& code) { return isWarning(code); }

/// An error with its code of the enumeration `E`, for which a free `isWarning(const E&)` is in
/// reach.
template <class E> class QOR_API ErrorWithCode : public ErrorBase {
public:
    /// An error made at this place; see ErrorBase.
    ErrorWithCode(const char* fileName, int lineNumber, E errorCode)
        : ErrorBase(fileName, lineNumber), code(errorCode) {}

    ErrorWithCode(const ErrorWithCode&) = default;

    /// Puts a copy of this error into `target`: code, place, uuid, description, infos and reasons.
    virtual void clone(std::unique_ptr<ErrorWithCode>& target) const {
        target = std::make_unique<ErrorWithCode>(*this);
    }

    /// True if the failure is one that a reader notes and passes over.
    virtual bool isWarning() const { return isWarningCode(code); }

    ~ErrorWithCode() override = default;

    E getCode() const { return code; }

private:
    std::shared_ptr<const ErrorBase> copy() const override {
        return std::make_shared<const ErrorWithCode>(*this);
    }

    E code;
};

}  // namespace QOR::ErrorHandling
