#include "Project.h"

#include <AttributeContainer/FieldFactory.h>

namespace example {

namespace {

const auto registrationRegistered =
    model::FieldFactory::addField<Registration>(Registration::getStaticClassName());
const auto scanRegistered = model::FieldFactory::addField<Scan>(Scan::getStaticClassName());

template <class T>
void addCustom(model::AttrContainer& container, const std::string& name, const T& value) {
    const auto attribute = std::make_shared<model::CustAttr<T>>(std::nullopt);
    attribute->set(value);
    container.addAttribute(attribute, name);
}

std::shared_ptr<Scan> addScan(model::AttrContainer& project, const std::string& name,
                              const QOR::Vec3d<double>& position, double deviation) {
    const auto scan = Scan::create();
    scan->name(name);
    scan->Operator("Kim");
    scan->Position(position);
    scan->NumPoints(1'000'000);
    const auto registration = scan->Registration().lock();
    registration->Deviation(deviation);
    registration->NumTargets(4);
    project.addField(scan, name, 0);
    return scan;
}

Project makeProject() {
    auto project = model::AttrContainer::create();
    project->name("Station");
    addCustom<std::string>(*project, "Client", "City");
    return project;
}

}  // namespace

Project makeOfficeVersion() {
    const auto project = makeProject();
    addCustom<std::string>(*project, "Remark", "check the hall");
    addScan(*project, "Test", {0, 0, 0}, 0.5);
    addScan(*project, "Hall", {2.5, 0, 1.75}, 0.002);
    addScan(*project, "Stairs", {6, 1.25, 3.5}, 0.003);
    return project;
}

Project makeFieldVersion() {
    const auto project = makeProject();
    addCustom<std::string>(*project, "Weather", "rain");
    const auto hall = addScan(*project, "Hall", {2.5, 0, 1.75}, 0.002001);
    hall->Operator("Robin");
    const auto stairs = addScan(*project, "Stairs", {6, 1.25, 3.75}, 0.003);
    stairs->Registration().lock()->NumTargets(5);
    addScan(*project, "Roof", {6, 1.25, 9}, 0.004);
    return project;
}

}  // namespace example
