// A host declares container classes of its own, writes an object of them and reads it back.
#include <AttributeContainer/ContainerClass.h>
#include <AttributeContainer/FieldFactory.h>
#include <AttributeContainer/Object.h>
#include <AttributeContainer/ReadContext.h>
#include <AttributeContainer/WriteContext.h>

#include <exception>
#include <iostream>
#include <memory>
#include <sstream>
#include <string>

namespace survey {

using namespace QOR;
using namespace QOR::AttributeContainer;

/// What carries the instrument.
class Tripod : public ContainerClass<Tripod, AttrContainer, "Tripod"> {
public:
    using Block::Block;

    QOR_ATTRIBUTE(1, double, LegLength,
                  1.2);  // metres; token 0 is the name that all containers have
};

// The three arguments are the class itself, its base, and the name under which streams know it.
/// Where the instrument stood for one scan, and how well it was levelled.
class Station : public ContainerClass<Station, Object, "Station"> {
public:
    using Block::Block;  // the constructor; objects are made by `Station::create()` alone

    // A row has the token, the type, the key and, where one is wanted, the default. The tokens go
    // on behind those of the base, whose last one is 5; a gap or a token used twice does not
    // compile. Each row gives `Operator()`, `Operator(value)`, the attribute itself as
    // `Attr_Operator()`, and `OperatorToken`. The key is also the name in streams and for
    // `getAttribute`.
    QOR_ATTRIBUTE(6, std::string, Operator);
    QOR_ATTRIBUTE(7, double, InstrumentHeight, 1.75);  // metres above the mark
    QOR_ATTRIBUTE(8, SVec2d<double>, Tilt);            // radians about x and y
    QOR_ATTRIBUTE(9, bool, Levelled, true);

    // A row of a field has a token of its own numbering, the class and the key. Each station gets a
    // tripod of its own when it is made; `Stand()` is a weak pointer to it.
    QOR_FIELD(0, Tripod, Stand);
};

// A stream holds the names of classes, and the factory makes the objects. A class is known for as
// long as its registration lives.
const auto tripodRegistered = FieldFactory::addField<Tripod>(Tripod::getStaticClassName());
const auto stationRegistered = FieldFactory::addField<Station>(Station::getStaticClassName());

std::shared_ptr<Station> makeStation() {
    auto station = Station::create();
    if (const auto error = station->setName("A1")) return nullptr;
    station->Operator("Robin \"Rob\" Smith");
    station->InstrumentHeight(1.625);
    station->Tilt({0.25, -0.5});
    station->Levelled(false);  // a default of a class is no default of a stream: false comes back
    station->Stand().lock()->LegLength(0.9);
    return station;
}

/// Whether `station` has the values of `makeStation`, and no others.
bool isComplete(const Station& station) {
    const auto stand = station.Stand().lock();
    return station.getName() == "A1" && station.Operator() == "Robin \"Rob\" Smith" &&
           station.InstrumentHeight() == 1.625 && station.Tilt() == SVec2d<double>{0.25, -0.5} &&
           !station.Levelled() && stand && stand->LegLength() == 0.9 &&
           station.getNumAttributes() == Station::lastAttrToken() + 1 &&
           station.getNumFields() == Station::lastFieldToken() + 1;
}

int run() {
    const auto project = Object::create();
    if (!project->addChild(makeStation(), 0)) return 1;

    std::stringstream stream;
    if (const auto error = project->writeTo(stream, std::make_shared<WriteContextBase>())) {
        std::cerr << "writing failed at " << error->getLocation() << '\n';
        return 1;
    }
    std::cout << stream.str() << "\n\n";

    const auto copy = Object::create();
    if (const auto error = copy->readFrom(stream, std::make_shared<ReadContextBase>())) {
        std::cerr << "reading failed at " << error->getLocation() << '\n';
        return 1;
    }
    const auto station = std::dynamic_pointer_cast<Station>(copy->inqChild("A1"));
    const bool isThere = station && isComplete(*station);
    std::cout << (isThere ? "all of it came back\n" : "something is missing\n");
    return isThere ? 0 : 1;
}

}  // namespace survey

int main() {
    try {
        return survey::run();
    } catch (const std::exception& failure) {  // what makes no number, and lack of memory
        std::cerr << "host_class: " << failure.what() << '\n';
        return 1;
    }
}
