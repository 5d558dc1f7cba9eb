#include "agent/ModuleConstants.h"

const char* const kFirstModuleConstant = "268435440";
const char* const kSecondModuleConstant = "268435442";
