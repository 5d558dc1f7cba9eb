#pragma once

/// Marks what the framework library defines and the module and the programs share. Everything else is
/// compiled with hidden visibility.
#define VQ_EXPORT __attribute__((visibility("default")))
