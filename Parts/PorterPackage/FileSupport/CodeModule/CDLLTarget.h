#pragma once

#include "PorterPackage/FileSupport/CodeModule/CABCCodeModule.h"

namespace NSPorter {

/// A code module that is a dynamic library.
class CDLLTarget : public CABCCodeModule {
public:
    explicit CDLLTarget(const CCodeModuleLocation& location) : CABCCodeModule(location) {}
};

} // namespace NSPorter
