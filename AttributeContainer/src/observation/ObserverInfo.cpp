#include <AttributeContainer/ObserverInfo.h>

namespace QOR::AttributeContainer {

const std::string& ObserverInfo::getStaticClassName() {
    static const std::string name{"ObserverInfo"};
    return name;
}

const std::string& ObserverInfo::getClassName() const { return getStaticClassName(); }

ObserverInfo::~ObserverInfo() = default;

InfoFailed::InfoFailed(ErrorPtr error) : error(std::move(error)) {}

InfoFailed::~InfoFailed() = default;

const std::string& InfoFailed::getStaticClassName() {
    static const std::string name{"InfoFailed"};
    return name;
}

const std::string& InfoFailed::getClassName() const { return getStaticClassName(); }

InfoStringMap::InfoStringMap(std::map<std::string, std::string> infos) : infos(std::move(infos)) {}

const std::string& InfoStringMap::getStaticClassName() {
    static const std::string name{"InfoStringMap"};
    return name;
}

const std::string& InfoStringMap::getClassName() const { return getStaticClassName(); }

std::optional<std::string> InfoStringMap::getInfoByKey(const std::string& key) const {
    const auto found = infos.find(key);
    return found != infos.end() ? found->second : std::string{};
}

}  // namespace QOR::AttributeContainer
