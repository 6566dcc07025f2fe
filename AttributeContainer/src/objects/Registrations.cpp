// The one list of the classes of this library that streams and tables can name.
#include <AttributeContainer/ArrayContainer.h>
#include <AttributeContainer/Container.h>
#include <AttributeContainer/FieldFactory.h>
#include <AttributeContainer/GenericBinaryObjectV2.h>
#include <AttributeContainer/HDRParameterField.h>
#include <AttributeContainer/MarkerBase.h>
#include <AttributeContainer/Object.h>
#include <AttributeContainer/Object2d.h>
#include <AttributeContainer/Object3d.h>
#include <AttributeContainer/PanoramaPicture.h>
#include <AttributeContainer/Picture.h>
#include <AttributeContainer/PictureColorPropertiesField.h>
#include <AttributeContainer/Point3d.h>
#include <AttributeContainer/ScanProperties.h>
#include <AttributeContainer/TMOEasyHDRField.h>
#include <AttributeContainer/TMOLinearField.h>
#include <AttributeContainer/TMOReinhard02Field.h>
#include <AttributeContainer/Transform.h>
#include <AttributeContainer/UnknownAttrContainer.h>

#include "containers/OwnClasses.h"

#include <memory>

namespace QOR::AttributeContainer {

namespace {
template <class X>
auto registration() {
    return FieldFactory::addField<X>(X::getStaticClassName());
}

// At load time, before a second thread can ask.
const std::shared_ptr<FieldFactory> filledFactory = FieldFactory::the();
}  // namespace

void registerOwnClasses() {
    // An array, because it ends with its last element first. It is made behind the factory, and so
    // ends before it.
    static const std::unique_ptr<const FieldFactory::FactoryRegistration> registrations[] = {
        registration<ArrayContainer>(),
        registration<AttrContainer>(),
        registration<Container>(),
        registration<GenericBinaryObjectV2>(),
        registration<HDRParameterField>(),
        registration<MarkerBase>(),
        registration<Object>(),
        registration<Object2d>(),
        registration<Object3d>(),
        registration<PanoramaPicture>(),
        registration<Picture>(),
        registration<PictureColorPropertiesField>(),
        registration<Point3d>(),
        registration<ScanProperties>(),
        registration<TMOEasyHDRField>(),
        registration<TMOLinearField>(),
        registration<TMOReinhard02Field>(),
        registration<Transform>(),
        registration<UnknownAttrContainer>(),
    };
}

}  // namespace QOR::AttributeContainer
