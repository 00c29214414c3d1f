#include "PorterPackage/FileSupport/CodeModule/CABCCodeModule.h"

namespace NSPorter {

namespace {

constinit CABCCodeModule* sCodeModule = nullptr;
std::thread::id sOwnerThread;

} // namespace

CABCCodeModule::CABCCodeModule(const CCodeModuleLocation& location) : fLocation(location) {
    if (sCodeModule == nullptr) {
        sCodeModule = this;
        sOwnerThread = std::this_thread::get_id();
    }
}

CABCCodeModule::~CABCCodeModule() {
    if (sCodeModule == this) {
        sCodeModule = nullptr;
        sOwnerThread = std::thread::id();
    }
}

CABCCodeModule* CABCCodeModule::GetCodeModule() {
    return sCodeModule;
}

std::thread::id CABCCodeModule::GetOwnerThread() {
    return sOwnerThread;
}

} // namespace NSPorter
