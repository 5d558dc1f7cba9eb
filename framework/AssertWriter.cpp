#include "framework/AssertWriter.h"

#include "host/AssertWrite.h"

#include <iostream>

namespace {

thread_local AssertWriter* t_current = nullptr;

} // namespace

AssertWriter::AssertWriter() noexcept : m_previous(t_current) {
    t_current = this;
}

AssertWriter::~AssertWriter() {
    t_current = m_previous;
}

AssertWriter* AssertWriter::Current() noexcept {
    return t_current;
}

void vq::AssertWrite(const char* file, int line, const StackTrace& stack) {
    if (AssertWriter* const writer = AssertWriter::Current(); writer != nullptr) {
        writer->Write(file, line, stack);
        return;
    }
    std::cerr << "assertion failed: " << file << ", line " << line << '\n' << stack.Text();
}
