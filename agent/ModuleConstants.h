#pragma once

/// Two texts in the module's data, 0x0FFFFFF0 and 0x0FFFFFF2 in decimal, for whoever reads the file itself:
/// the module exports no name to find them by, and the agent never reads them.
extern const char* const kFirstModuleConstant;
extern const char* const kSecondModuleConstant;
