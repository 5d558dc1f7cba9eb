#include "bench/BareParse.h"

#include <stdexcept>

#include <expat.h>

namespace {

void XMLCALL OnStart(void* /*self*/, const XML_Char* /*name*/, const XML_Char** /*attributes*/) {}
void XMLCALL OnEnd(void* /*self*/, const XML_Char* /*name*/) {}
void XMLCALL OnText(void* /*self*/, const XML_Char* /*text*/, int /*length*/) {}

} // namespace

void BareParse(const std::string& text) {
    XML_Parser const parser = XML_ParserCreate("UTF-8");
    XML_SetElementHandler(parser, &OnStart, &OnEnd);
    XML_SetCharacterDataHandler(parser, &OnText);
    const XML_Status status = XML_Parse(parser, text.data(), static_cast<int>(text.size()), XML_TRUE);
    XML_ParserFree(parser);
    if (status != XML_STATUS_OK)
        throw std::logic_error("the measure is no XML");
}
