// The attributes that were added to a container at run time.
#pragma once

#include <AttributeContainer/GenAttrList.h>

#include <QOR/KeyTable.h>

#include <optional>

namespace QOR::AttributeContainer {

/// Attributes with names of their own. Removal moves the last one into the gap, so tokens are not
/// stable across it.
class QOR_API CustAttrList : public GenAttrList<Attribute> {
public:
    explicit CustAttrList(std::uint64_t firstToken);
    ~CustAttrList() override;

    /// Costs no search for a custom attribute that is here, unless another list holds it as well.
    std::uint64_t getToken(const Attribute& attribute) const override;
    /// \return an empty pointer when the name is taken. An empty name is no name.
    std::weak_ptr<Attribute> addElement(std::shared_ptr<Attribute>& attribute,
                                        const std::string& name) override;
    /// Removes what stands at the token, with the move that goes with it, and puts the attribute
    /// there in its place; at the last token it appends.
    bool setElement(std::uint64_t token, std::shared_ptr<Attribute>& attribute,
                    const std::string& name) override;
    using GenAttrList<Attribute>::rmElement;
    bool rmElement(std::uint64_t token, bool compress) override;
    virtual std::uint64_t getToken(const std::string& name) const;
    virtual std::optional<std::string> getElementName(std::uint64_t token) const;

private:
    void noteSlot(std::uint64_t token);

    DataStructures::KeyTable names;
};

}  // namespace QOR::AttributeContainer
