#include "support/Sample.h"

namespace qormodel::testing {

const std::string unsetObjectRows = R"model(Attr<String> { 
Name "Action"
}
Attr<String> { 
Name "Event"
}
Attr<uint16_t> { 
Name "MajorVersion"
}
Attr<uint16_t> { 
Name "MinorVersion"
}
Attr<Uuid> { 
Name "UUID"
}
)model";

const std::string projectText = R"model("Test"
"kVLib" 9.1.0.0
AttrContainer { 
Attr<String> { 
Name "Name"
Value "Project"
}
)model" + unsetObjectRows + R"model(Attr<Vec3dd> { 
Name "Origin"
Value 1 2.5 -3
}
Attr<StringMap> { 
Name "Map"
Value 1 "a b"=>"x } y"
}
}
Child { 
"Object" "Scans"
AttrContainer { 
Attr<String> { 
Name "Name"
Value "Scans"
}
)model" + unsetObjectRows + R"model(Attr<int> { 
Name "Count"
Value 2
PostObserver 
ObserverPath { 
Path "/"
Priority 3
Action "Notify"
}
}
SubContainer { 
"AttrContainer" "Box"
AttrContainer { 
Attr<String> { 
Name "Name"
Value "Box"
}
Attr<double> { 
Name "Size"
Value 2.5
}
}
}
}
Child { 
"Object" "First"
AttrContainer { 
Attr<String> { 
Name "Name"
Value "First"
}
)model" + unsetObjectRows + R"model(Attr<Vec3ddVector> { 
Name "Points"
Value { 1 2 3 4 5 6 } 
}
}
}
}
)model";

std::string modelText(const std::string& body) {
    return "\"Test\"\n\"kVLib\" 9.1.0.0\n" + body;
}

std::string valueModel(const std::string& type, const std::string& value) {
    return modelText("AttrContainer { \n" + type + " { \nName \"Tested\"\nValue " + value +
                     "\n}\n}\n");
}

}  // namespace qormodel::testing
