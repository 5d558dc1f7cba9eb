#pragma once

#include <string>

/// Parses the text with Expat and empty handlers: the measure for everything that reads or writes it.
void BareParse(const std::string& text);
