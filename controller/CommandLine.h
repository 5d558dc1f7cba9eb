#pragma once

namespace controller {

/// Reads the command line and does what it asks for; gives the exit status: 0 for a good end, 1 when
/// something could not be done, 2 when command line or house file are wrong, 3 when the database cannot be
/// used: what stays as it is until somebody acts.
int RunCommandLine(int argc, const char* const* argv);

} // namespace controller
