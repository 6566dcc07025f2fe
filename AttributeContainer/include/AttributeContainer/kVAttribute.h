// Attributes: the base, the typed ones, and the list of their types.
#pragma once

#include <AttributeContainer/Attr.h>
#include <AttributeContainer/Attribute.h>
#include <AttributeContainer/ValueTypes.h>
