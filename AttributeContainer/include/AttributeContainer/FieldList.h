// The fields of a container: the child containers that belong to it by definition or by name.
#pragma once

#include <AttributeContainer/AttrDefinition.h>
#include <AttributeContainer/GenAttrList.h>

#include <QOR/KeyTable.h>

#include <functional>
#include <optional>
#include <vector>

namespace QOR::AttributeContainer {

/// Fields in one numbering: the slots that the classes declare come first and stay, empty or not;
/// fields added at run time follow.
class QOR_API FieldList : public GenAttrList<AttrContainer> {
public:
    using Source = std::optional<std::reference_wrapper<const AttrContainer>>;

    explicit FieldList(std::uint64_t firstToken);
    ~FieldList() override;

    using GenAttrList<AttrContainer>::getToken;
    /// Declares how many slots always exist. \return false, and no change, for 0.
    bool setMinCapacity(std::uint64_t capacity) override;
    std::uint64_t getMinCapacity() const override;
    virtual std::uint64_t getToken(const std::string& name) const;
    virtual std::optional<std::string> getElementName(std::uint64_t token) const;
    virtual bool addElement(std::shared_ptr<AttrContainer> field, const std::string& name);
    virtual bool setElement(std::uint64_t token, std::shared_ptr<AttrContainer> field);
    /// Places a field; the names of the slots stay as they are.
    virtual bool setElement(std::uint64_t token, std::shared_ptr<AttrContainer> field,
                            const std::string& name);
    /// Removes a field. A declared slot stays, empty, and a token out of range is no failure.
    bool rmElement(std::uint64_t token, bool compress) override;
    virtual bool rmElement(std::shared_ptr<const AttrContainer> field, bool compress);

    std::weak_ptr<AttrContainer> getAttrContainer(std::uint64_t token);
    std::weak_ptr<const AttrContainer> getAttrContainer(std::uint64_t token) const;
    /// Makes the fields of one table for `owner`; with a source its fields are copied.
    /// \return false at the first row that cannot be made.
    bool createFields(AttrContainer& owner, const std::vector<FieldDefinition>& rows,
                      CreateType type, const Source& source);
    /// Copies the fields of another list into this one.
    bool createAttrContainer(AttrContainer& owner, const FieldList& source, CreateType type);
    /// Puts a field in the place of another. \return false when the old one is not here.
    bool replaceField(const std::shared_ptr<const AttrContainer>& old,
                      std::shared_ptr<AttrContainer> replacement);

private:
    std::shared_ptr<AttrContainer> createField(AttrContainer& owner, const FieldDefinition& row,
                                               CreateType type, const Source& source);

    std::uint64_t minCapacity = 0;
    DataStructures::KeyTable names;
};

}  // namespace QOR::AttributeContainer
