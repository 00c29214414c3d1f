#pragma once

// Every exception class of the family.
#include "Failure/Classes/XAccessErrors.h"
#include "Failure/Classes/XFormatErrors.h"
#include "Failure/Classes/XLogicErrors.h"
#include "Failure/Classes/XProgressErrors.h"
#include "Failure/Classes/XStdErrors.h"
#include "Failure/Classes/XTransferErrors.h"
#include "Failure/Classes/XUnitTestFailure.h"
