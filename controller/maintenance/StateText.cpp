#include "controller/maintenance/StateText.h"

#include "host/VqXML.h"

#include <fstream>
#include <sstream>
#include <stdexcept>

namespace controller {

std::string statetext::Read(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    std::ostringstream content;
    content << stream.rdbuf();
    if (!stream)
        throw std::runtime_error(file.string() + " cannot be read");
    std::string text = content.str();
    const auto document = VqXML::CreateXmlDocument(text);
    if (!document)
        throw std::runtime_error(file.string() + " is not XML");
    if (document->GetRootNode()->GetName() != "announcements")
        throw std::runtime_error(file.string() + " holds no announcements: its root element is \"" +
                                 document->GetRootNode()->GetName() + "\" and not \"announcements\"");
    return text;
}

} // namespace controller
