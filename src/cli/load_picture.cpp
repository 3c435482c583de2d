#include "cli/load_picture.h"

#include <dlfcn.h>
#include <filesystem>
#include <string>

#include "cli/arguments.h"

namespace orvantis::cli {

namespace {

namespace fs = std::filesystem;

// Beside the program in its build folder, or among the installed program's libraries.
fs::path FindModule() {
    std::error_code failure;
    const fs::path folder = fs::read_symlink("/proc/self/exe", failure).parent_path();
    for (const char* place : {".", "../lib/orvantis"}) {
        fs::path file = folder / place / kPictureModuleFile;
        if (fs::exists(file, failure)) return file;
    }
    return kPictureModuleFile;
}

}  // namespace

const PictureModule* LoadPictureModule() {
    static const PictureModule* const module = []() -> const PictureModule* {
        void* library = ::dlopen(FindModule().c_str(), RTLD_NOW | RTLD_LOCAL);
        if (library == nullptr) {
            Complain(kWorkFailed, kPictureModuleFile, ::dlerror());
            return nullptr;
        }
        const void* symbol = ::dlsym(library, kPictureModuleSymbol);
        if (symbol == nullptr) Complain(kWorkFailed, kPictureModuleFile, ::dlerror());
        return static_cast<const PictureModule*>(symbol);
    }();
    return module;
}

}  // namespace orvantis::cli
