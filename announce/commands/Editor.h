#pragma once

#include <string>

/// The user's editor, $VISUAL or $EDITOR, on a file of its own. The file stays where it is, whatever happens,
/// until what the user has written is discarded.
class Editor {
public:
    /// Makes the file. Throws Failure when that is not possible.
    Editor();

    /// Lets the user edit `text`; gives what stands in the file then. Throws Failure when the editor fails.
    [[nodiscard]] std::string Edit(const std::string& text);

    /// Nobody needs the file any more.
    void Discard() noexcept;

    [[nodiscard]] const std::string& File() const noexcept { return m_file; }

private:
    std::string m_file;
};
