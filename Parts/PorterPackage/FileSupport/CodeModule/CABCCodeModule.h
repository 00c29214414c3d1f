#pragma once

#include "PorterPackage/FileSupport/CodeModule/CCodeModuleLocation.h"

#include <thread>

namespace NSPorter {

/// A code module that knows where it lies. The first one made is the process's code module until it
/// is destroyed. Made and destroyed while no other thread is here.
class CABCCodeModule {
public:
    virtual ~CABCCodeModule();
    CABCCodeModule(const CABCCodeModule&) = delete;
    CABCCodeModule& operator=(const CABCCodeModule&) = delete;

    const CCodeModuleLocation& GetLocation() const { return fLocation; }

    /// Null when there is none.
    static CABCCodeModule* GetCodeModule();
    /// The thread that made the code module; recorded, and nothing is done with it.
    static std::thread::id GetOwnerThread();

protected:
    explicit CABCCodeModule(const CCodeModuleLocation& location);

private:
    CCodeModuleLocation fLocation;
};

} // namespace NSPorter
