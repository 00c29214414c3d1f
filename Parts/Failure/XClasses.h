#pragma once

// Every exception class of the family.
#include "Failure/XAccessErrors.h"
#include "Failure/XFormatErrors.h"
#include "Failure/XLogicErrors.h"
#include "Failure/XProgressErrors.h"
#include "Failure/XStdErrors.h"
#include "Failure/XTransferErrors.h"
#include "Failure/XUnitTestFailure.h"
