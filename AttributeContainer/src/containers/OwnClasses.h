// The one word that the factory has with the classes above it.
#pragma once

namespace QOR::AttributeContainer {

/// Registers the classes of this library with the factory. Called once, by the factory itself, so
/// that they are there for whoever asks first.
void registerOwnClasses();

}  // namespace QOR::AttributeContainer
