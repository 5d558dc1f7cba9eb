#pragma once

/// Two texts that the module has always carried (0x0FFFFFF0 and 0x0FFFFFF2 in decimal). The agent never reads
/// them.
extern const char* const kFirstModuleConstant;
extern const char* const kSecondModuleConstant;
