// How observables and observers resolve a path that names another element.
#include <AttributeContainer/Observable.h>
#include <AttributeContainer/Observer.h>

#include "support/ObserverGraph.h"

#include <gtest/gtest.h>

#include <map>

using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

namespace {

using Text = std::optional<const std::string>;

// An observer that knows some elements by name, and resolves longer paths as observers do.
class Place : public Observer {
public:
    Place() : Observer(std::nullopt) {}

    using Observer::inqObserver;
    std::weak_ptr<const ObservingObject> inqObserver(const Text& path) const override {
        const auto found = path ? near.find(*path) : near.end();
        return found != near.end() ? found->second : Observer::inqObserver(path);
    }
    std::string getName() const override { return "place"; }

    std::map<std::string, std::shared_ptr<ObservingObject>> near;
};

// An observable with nothing but the resolution of the base class.
class Plain : public Observable {
public:
    std::optional<std::reference_wrapper<const Observer>> lookupObject() const override {
        return std::nullopt;
    }
    std::string getName() const override { return "plain"; }
};

// scan / station / watcher
struct Scene {
    std::shared_ptr<Place> scan = std::make_shared<Place>();
    std::shared_ptr<Place> station = std::make_shared<Place>();
    std::shared_ptr<Listener> watcher = std::make_shared<Listener>();

    Scene() {
        scan->near["station"] = station;
        station->near["watcher"] = watcher;
    }
};

std::shared_ptr<const ObservingObject> found(const Observer& from, const Text& path) {
    return from.inqObserver(path).lock();
}

// Hands every path round to the thread's root again.
class Echo : public Signpost {
public:
    using Observer::inqObserver;
    std::weak_ptr<const ObservingObject> inqObserver(const Text& path) const override {
        return Observer::inqObserver(path);
    }
};

}  // namespace

// Name by name ----------------------------------------------------------------------------------

TEST(PathText, GoesFromNameToName) {
    Scene scene;
    EXPECT_EQ(found(*scene.scan, "station/watcher"), scene.watcher);
}

TEST(PathText, DropsEmptyNames) {
    Scene scene;
    EXPECT_EQ(found(*scene.scan, "station//watcher/"), scene.watcher);
    EXPECT_EQ(found(*scene.scan, "station///"), nullptr) << "one name is left";
}

TEST(PathText, LeadsNowhereWhereANameIsUnknown) {
    Scene scene;
    EXPECT_EQ(found(*scene.scan, "tripod/watcher"), nullptr);
    EXPECT_EQ(found(*scene.scan, "station/tripod"), nullptr);
    EXPECT_EQ(found(*scene.scan, "station/watcher/tripod"), nullptr);
}

TEST(PathText, NeedsTwoNamesWhereTheElementKnowsNone) {
    Scene scene;
    EXPECT_EQ(found(*scene.watcher, "station"), nullptr);
    EXPECT_EQ(found(*scene.watcher, "..."), nullptr);
}

TEST(PathText, GivesTheElementItselfForAnEmptyText) {
    Scene scene;
    EXPECT_EQ(found(*scene.watcher, ""), scene.watcher);
    EXPECT_EQ(found(*scene.watcher, std::nullopt), nullptr);
}

TEST(PathText, GivesOutWhatCanBeChangedFromWhatCanBeChanged) {
    Scene scene;
    const std::shared_ptr<ObservingObject> element = scene.scan->inqObserver("station").lock();
    EXPECT_EQ(element, scene.station);
}

TEST(PathText, LeadsAnObservableWithoutAPlaceNowhere) {
    const auto plain = std::make_shared<Plain>();
    const Plain& constPlain = *plain;
    for (const Text& path : {Text{}, Text{""}, Text{"a"}, Text{"a/b"}, Text{"/"}})
        EXPECT_EQ(constPlain.inqObserver(path).lock(), nullptr);
}

TEST(PathText, StartsAtTheObservable) {
    class Door : public Plain {
    public:
        using Observable::inqObserver;
        std::weak_ptr<const ObservingObject> inqObserver(const Text& path) const override {
            if (path == "scan") return scan;
            return Observable::inqObserver(path);
        }
        std::weak_ptr<const ObservingObject> scan;
    };
    Scene scene;
    const auto door = std::make_shared<Door>();
    door->scan = scene.scan;
    const Door& constDoor = *door;
    EXPECT_EQ(constDoor.inqObserver("scan/station/watcher").lock(), scene.watcher);
}

// White space, "/" and "#" ----------------------------------------------------------------------

TEST(PathText, SkipsLeadingWhiteSpace) {
    Scene scene;
    EXPECT_EQ(found(*scene.scan, " \t\nstation/watcher"), scene.watcher);
    EXPECT_EQ(found(*scene.scan, "  station"), scene.station);
    EXPECT_EQ(found(*scene.scan, "   "), nullptr);
}

TEST(PathText, LeadsNowhereFromTheRootWhereThereIsNone) {
    Scene scene;
    EXPECT_EQ(found(*scene.scan, "/station"), nullptr);
    EXPECT_EQ(found(*scene.scan, "/"), nullptr);
    EXPECT_EQ(found(*scene.scan, "#17"), nullptr);
}

TEST(PathText, HandsAnAbsolutePathToThePathRootWithoutItsSlash) {
    Scene scene;
    const auto root = std::make_shared<Signpost>();
    root->known["station/watcher"] = scene.watcher;
    const PathRootScope scope(root);
    EXPECT_EQ(found(*scene.watcher, "/station/watcher"), scene.watcher);
    EXPECT_EQ(found(*scene.watcher, " /"), nullptr);
    EXPECT_EQ(root->asked, (std::vector<std::string>{"station/watcher", ""}));
}

TEST(PathText, HandsANumberSignToThePathRootAsItIs) {
    Scene scene;
    const auto root = std::make_shared<Signpost>();
    root->known["#17"] = scene.watcher;
    const PathRootScope scope(root);
    EXPECT_EQ(found(*scene.scan, "#17"), scene.watcher);
    EXPECT_EQ(root->asked, std::vector<std::string>{"#17"});
}

TEST(PathText, ResolvesNamesOfARelativePathWithoutThePathRoot) {
    Scene scene;
    const auto root = std::make_shared<Signpost>();
    const PathRootScope scope(root);
    EXPECT_EQ(found(*scene.scan, "station/watcher"), scene.watcher);
    EXPECT_TRUE(root->asked.empty());
}

TEST(PathText, EndsWhereThePathRootHandsItRoundForEver) {
    const auto echo = std::make_shared<Echo>();
    const PathRootScope scope(echo);
    EXPECT_EQ(found(*echo, "#17"), nullptr);
    EXPECT_EQ(found(*echo, std::string(100000, '/')), nullptr);
    EXPECT_EQ(found(*echo, ""), echo) << "and works on";
}

TEST(PathText, OutlivesAPathRootThatIsChangedMeanwhile) {
    class Quitter : public Signpost {
    public:
        using Observer::inqObserver;
        std::weak_ptr<const ObservingObject> inqObserver(const Text& path) const override {
            currentPathRoot(nullptr);
            return Signpost::inqObserver(path);
        }
    };
    Scene scene;
    Signpost::currentPathRoot(std::make_shared<Quitter>());
    EXPECT_EQ(found(*scene.watcher, "/station"), nullptr);
    EXPECT_FALSE(Signpost::currentPathRoot().has_value());
}
