// What stands for an object whose class is not known here.
#pragma once

#include <AttributeContainer/IFallbackObject.h>
#include <AttributeContainer/Object.h>

#include <memory>
#include <string>

namespace QOR::AttributeContainer {

/// Keeps what a stream holds of an object of an unknown class, and gives it back when written.
///
/// Where the block has a container part that can be read, its attributes, fields and children are
/// those of this object; everything else is kept as text. Streams are where such objects come
/// from: the factory does not know the class.
class QOR_API FallbackObject : public IFallbackObject, public Object {
public:
    /// Any object can be the source: it gives its name and what else an `Object` has.
    using Source = Object::Source;

    FallbackObject(const ConstructorProtector& key, CreateType type, const Source& source);
    ~FallbackObject() override;

    static std::shared_ptr<FallbackObject> create(CreateType type = CreateDeep,
                                                  Source source = std::nullopt);
    static const std::string& getStaticClassName();
    const std::string& getClassName() const override;
    /// The copy stands for no class and keeps no text.
    std::shared_ptr<AttrContainer> duplicate(CreateType type) const override;

    /// The class name that the stream gave.
    void setOriginalClassName(const std::string& className) override;
    const std::string& getOriginalClassName() const override { return originalClassName; }

    bool holdsNoUnknownData() override;

    /// Takes the whole rest of the block in which the stream stands.
    /// \return ElementSkipped, a warning, when all is well; StreamFailed where the input ends
    /// inside the block.
    [[nodiscard]] ErrorPtr readFrom(std::istream& stream,
                                    std::shared_ptr<const ReadContextBase> context) override;
    [[nodiscard]] ErrorPtr writeTo(std::ostream& stream,
                                   std::shared_ptr<const WriteContextBase> context) override;

private:
    void parseContainer(const std::shared_ptr<const ReadContextBase>& context);
    bool readContainer(const std::string& text,
                       const std::shared_ptr<const ReadContextBase>& context);
    void rmContainer(std::uint64_t numFormerChildren);

    std::string originalClassName;
    std::string prefixText;     // what stands ahead of the container part
    std::string containerText;  // the container part, or all there is, while it is not parsed
    bool containerParsed = false;
};

}  // namespace QOR::AttributeContainer
