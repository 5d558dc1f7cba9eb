#include "bench/SavedState.h"

std::string AnnouncementText(std::size_t id) {
    const std::string number = std::to_string(id);
    return "<announcement><id>" + number + "</id><name>Announcement " + number +
           "</name><audio><file>door_bell_" + number + "</file><delay>500</delay></audio>" +
           "<video><file>images/door.png</file><text>Somebody is at door " + number +
           "</text><delay>200</delay><timeout>5000</timeout><displayID>0</displayID><variableID>0</"
           "variableID>"
           "<variableName/><OKButton>true</OKButton></video>"
           "<rooms><room><id>11</id><volume>40</volume></room><room><id>12</id><volume>55</volume></room></"
           "rooms>"
           "<navigators><navigator><id>21</id><room_id>11</room_id><onscreen>true</onscreen></navigator>"
           "<navigator><id>22</id><room_id>12</room_id><onscreen>false</onscreen></navigator></navigators>"
           "</announcement>";
}

std::string SavedState(std::size_t count) {
    std::string text = "<announcements>";
    for (std::size_t id = 1; id <= count; ++id)
        text += AnnouncementText(id);
    return text + "</announcements>";
}
