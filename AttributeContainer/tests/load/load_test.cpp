// Loads the library and a plug-in of it at run time: load_test <library or "-"> <plug-in>.
// The program itself does not link the library, so nothing of it stands before dlopen.

#include <dlfcn.h>

#include <cstdlib>
#include <iostream>
#include <string>

namespace {

int failures = 0;

void check(bool holds, const std::string& what) {
    std::cout << (holds ? "ok      " : "FAILED  ") << what << '\n';
    if (!holds) ++failures;
}

void* load(const char* path) {
    void* module = dlopen(path, RTLD_NOW | RTLD_LOCAL);
    if (module) return module;
    std::cout << "FAILED  dlopen: " << dlerror() << '\n';
    std::exit(1);
}

template <class Function> Function* find(void* module, const char* name) {
    auto* function = reinterpret_cast<Function*>(dlsym(module, name));
    if (function) return function;
    std::cout << "FAILED  dlsym: " << name << " is not there\n";
    std::exit(1);
}

void checkLibrary(const char* path) {
    void* library = load(path);
    auto* version = find<const char*()>(library, "attributeContainergetVersionString");
    check(version() == nullptr, "the version string for foreign callers is a null pointer");
    check(dlclose(library) == 0, "the library can be let go");
}

void checkPlugin(const char* path) {
    void* plugin = load(path);
    check(find<bool()>(plugin, "pluginGotAnObjectOnLoad")(),
          "the factory gave an object to a static initialiser of the plug-in");
    check(find<bool()>(plugin, "pluginGetsAnObject")(), "the factory gives an object once loaded");
    check(dlclose(plugin) == 0, "the plug-in can be let go");
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::cerr << "usage: load_test <library or -> <plug-in>\n";
        return 2;
    }
    // Twice, since a library that was let go may have to build its tables anew.
    for (int round = 1; round <= 2; ++round) {
        if (std::string(argv[1]) != "-") checkLibrary(argv[1]);
        checkPlugin(argv[2]);
    }
    return failures == 0 ? 0 : 1;
}
