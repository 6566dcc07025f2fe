// A plug-in that leans on the library: it makes an object while it is being loaded, and on demand.

#include <AttributeContainer/AttributeContainer.h>

#include <memory>

#if defined(_WIN32)
#define PLUGIN_EXPORT __declspec(dllexport)
#else
#define PLUGIN_EXPORT __attribute__((visibility("default")))
#endif

namespace AC = QOR::AttributeContainer;

namespace {

bool factoryGivesAnObject() {
    const auto object =
        std::dynamic_pointer_cast<AC::Object>(AC::FieldFactory::the()->createField("Object"));
    return object && object->getName() == "Object" && object->getAttrToken("UUID") == 5;
}

// Runs inside dlopen, when nothing of the plug-in's program is ready for it.
const bool gaveAnObjectOnLoad = factoryGivesAnObject();

}  // namespace

extern "C" PLUGIN_EXPORT bool pluginGotAnObjectOnLoad() { return gaveAnObjectOnLoad; }
extern "C" PLUGIN_EXPORT bool pluginGetsAnObject() { return factoryGivesAnObject(); }
