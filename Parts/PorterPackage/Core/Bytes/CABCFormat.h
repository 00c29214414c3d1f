// The base of all chunk classes.
#pragma once

namespace NSPorter {

class CABCFormat {
public:
    CABCFormat() = default;
    CABCFormat(const CABCFormat&) = default;
    CABCFormat& operator=(const CABCFormat&) = default;
    virtual ~CABCFormat() = default;

    /// For formats that need a step behind their constructor. One that is complete once
    /// constructed, as every chunk of a loop file is, leaves it empty.
    virtual void FinishReading() = 0;
};

} // namespace NSPorter
