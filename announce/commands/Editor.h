#pragma once

#include <string>

/// The user's editor, $VISUAL or $EDITOR, on a file of its own. The file goes away with this object, unless
/// it is kept.
class Editor {
public:
    /// Makes the file. Throws Failure when that is not possible.
    Editor();
    Editor(const Editor&) = delete;
    Editor& operator=(const Editor&) = delete;
    ~Editor();

    /// Lets the user edit `text`; gives what stands in the file then. Throws Failure when the editor fails;
    /// the file is kept then.
    [[nodiscard]] std::string Edit(const std::string& text);

    /// What the user has written shall not be lost; gives the file's name.
    const std::string& Keep() noexcept;

private:
    std::string m_file;
    bool m_isKept = false;
};
