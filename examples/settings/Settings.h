// The settings of an application, as a tree of containers.
#pragma once

#include <AttributeContainer/ContainerClass.h>
#include <AttributeContainer/kVAttrContainer.h>

#include <string>

namespace settings {

using namespace QOR;
using namespace QOR::AttributeContainer;

/// How the window lies on the screen.
class Window : public ContainerClass<Window, AttrContainer, "Window"> {
public:
    using Block::Block;

    QOR_ATTRIBUTE(1, SVec2d<int>, Position);
    QOR_ATTRIBUTE(2, SVec2d<int>, Size, SVec2d<int>(800, 600));
    QOR_ATTRIBUTE(3, bool, Maximized, false);
    // Of this run alone: no store and no stream holds it.
    QOR_ATTRIBUTE(4, int, Handle, 0, AttrDefinition::notPersistent);
};

/// How scans are taken.
class Scanning : public ContainerClass<Scanning, AttrContainer, "Scanning"> {
public:
    using Block::Block;

    QOR_ATTRIBUTE(1, double, Resolution, 0.04);  // degrees between two points
    QOR_ATTRIBUTE(2, int, Gain, 3);
    QOR_ATTRIBUTE(3, std::string, Operator);
    QOR_ATTRIBUTE(4, std::string, Comment);
};

/// All of them.
class Settings : public ContainerClass<Settings, AttrContainer, "Settings"> {
public:
    using Block::Block;

    QOR_FIELD(0, settings::Window, Window);
    QOR_FIELD(1, settings::Scanning, Scanning);
    QOR_ATTRIBUTE(1, int, NumStarts, 0);
};

}  // namespace settings
