#include "tests/module/ElfFile.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include <cxxabi.h>

namespace {

using Names = std::vector<std::string>;

bool NeedsLibrary(const Names& needed, const std::string& beginning) {
    return std::any_of(needed.begin(), needed.end(), [&](const std::string& name) {
        return name.compare(0, beginning.size(), beginning) == 0;
    });
}

/// The operation that a symbol stands for, without arguments: "VqXML::CreateXmlNode".
std::string Operation(const std::string& symbol) {
    int status = 0;
    const std::unique_ptr<char, decltype(&std::free)> name(
        abi::__cxa_demangle(symbol.c_str(), nullptr, nullptr, &status), &std::free);
    const std::string whole = status == 0 ? name.get() : symbol;
    return whole.substr(0, whole.find_first_of("[("));
}

/// What the module takes from the framework.
std::set<std::string> TakenFromTheFramework() {
    const Names imported = ElfFile(MODULE).ImportedSymbols();
    const Names exported = ElfFile(FRAMEWORK).ExportedSymbols();
    Names shared;
    std::set_intersection(imported.begin(), imported.end(), exported.begin(), exported.end(),
                          std::back_inserter(shared));
    std::set<std::string> operations;
    std::transform(shared.begin(), shared.end(), std::inserter(operations, operations.end()), Operation);
    return operations;
}

/// What drivers call on themselves, then the virtual operations, whose addresses stand in the agent's table.
constexpr const char* kBaseDriver[] = {"AddTimer",
                                       "FireEvent",
                                       "LogMessage",
                                       "DmInvalidateState",
                                       "GetInstanceManager",
                                       "GetHelper",
                                       "AddRef",
                                       "Release",
                                       "QueryInterface",
                                       "BoundCall",
                                       "OnBindingChanged",
                                       "GetRoomId",
                                       "GetDeviceId",
                                       "GetDeviceName",
                                       "GetDeviceType",
                                       "GetDeviceRoomNameAddr",
                                       "GetDeviceStateAddr",
                                       "SetRoomName",
                                       "HaveBeenIdentified",
                                       "LateInitialize",
                                       "GetMultiplicity",
                                       "Initialize",
                                       "OnDriverAdded",
                                       "OnDestroy",
                                       "RemovedFromProject",
                                       "OnAVRoomOff",
                                       "GetIdentifyStrings",
                                       "GetModel",
                                       "GetControlTag",
                                       "GetStringNameDriver",
                                       "GetStringNameProxy",
                                       "OnDriverNameChanged",
                                       "GetCapabilities",
                                       "GetEvents",
                                       "GetInitializeData",
                                       "TestCondition",
                                       "OnAVSelected",
                                       "OnAVReSelected",
                                       "OnAVDeselected",
                                       "OnAVAddLocationInfo",
                                       "IsAVOutputToInputValid",
                                       "IsAVMultiSelect",
                                       "IsAVSourceAvailable",
                                       "GetDriverType",
                                       "GetDeviceCommon",
                                       "GetDeviceIP",
                                       "OnRoomNameChanged",
                                       "GetDeviceBindingInfo",
                                       "GetEventLabel",
                                       "VmAdd",
                                       "VmRemove",
                                       "OnVariableChanged",
                                       "OnConnectionStatusChanged",
                                       "OnDataIn",
                                       "OnPoll",
                                       "OnNetworkBound",
                                       "OnEventFired",
                                       "OnNetworkBindingChanged",
                                       "RegisterConditionals",
                                       "RegisterVariables",
                                       "UnregisterVariables"};

/// All that a host must define for the module; the rest of its operations are virtual.
std::set<std::string> OfferedByEveryHost() {
    std::set<std::string> offered{"VqBaseAgentDriver::VqBaseAgentDriver",
                                  "VqBaseAgentDriver::~VqBaseAgentDriver",
                                  "VqBaseAgentDriver::GetCmdDispatcher",
                                  "VqBaseAgentDriver::GetUICmdDispatcher",
                                  "VqBaseAgentDriver::ExecuteCommand",
                                  "VqBaseAgentDriver::UIRequest",
                                  "typeinfo for VqBaseAgentDriver",
                                  "typeinfo for VqBaseDriver", // wanted by the sanitizers' build only
                                  "VqXML::CreateXmlNode",
                                  "VqXML::CreateXmlDocument",
                                  "XmlHelper::AddChild",
                                  "vq::AssertWrite",
                                  "vq::StackTrace::StackTrace",
                                  "vq::ToString"};
    for (const char* const operation : kBaseDriver)
        offered.insert(std::string("VqBaseDriver::") + operation);
    return offered;
}

TEST(ModuleSymbolsTest, ModuleTakesNothingFromTheFrameworkButWhatEveryHostOffers) {
    const std::set<std::string> taken = TakenFromTheFramework();
    const std::set<std::string> offered = OfferedByEveryHost();
    Names others;
    std::set_difference(taken.begin(), taken.end(), offered.begin(), offered.end(),
                        std::back_inserter(others));
    EXPECT_EQ(others, Names{});
    EXPECT_EQ(taken.count("VqXML::CreateXmlNode"), 1U); // the tables are read at all
}

TEST(ModuleSymbolsTest, ModuleHoldsItsTwoConstantTexts) {
    const ElfFile module(MODULE);
    EXPECT_TRUE(module.Holds("268435440"));
    EXPECT_TRUE(module.Holds("268435442"));
    EXPECT_FALSE(module.Holds("268435441"));
}

TEST(ModuleSymbolsTest, ModuleExportsItsEntryUnmangledAndNothingElse) {
    EXPECT_EQ(ElfFile(MODULE).ExportedSymbols(), Names{"GetCreationFunc"});
}

TEST(ModuleSymbolsTest, SymbolTablesAreReadAtAll) {
    const Names exported = ElfFile(FRAMEWORK).ExportedSymbols();

    EXPECT_GT(exported.size(), 10U);
    EXPECT_EQ(std::count(exported.begin(), exported.end(), "_ZN2vq8ToStringB5cxx11Ej"), 1);
}

TEST(ModuleSymbolsTest, ModuleTakesTheFrameworkFromTheSharedLibrary) {
    const Names needed = ElfFile(MODULE).NeededLibraries();

    EXPECT_TRUE(NeedsLibrary(needed, "libannouncement_framework.so."));
    for (const char* const library : {"libexpat", "libgst", "libboost", "libyaml", "libsqlite"})
        EXPECT_FALSE(NeedsLibrary(needed, library)) << library;
}

TEST(ModuleSymbolsTest, ProgramLoadsTheModuleByFileAndDoesNotLinkIt) {
    const Names needed = ElfFile(PROGRAM).NeededLibraries();

    EXPECT_TRUE(NeedsLibrary(needed, "libannouncement_framework.so."));
    EXPECT_FALSE(NeedsLibrary(needed, "announcement_agent"));
    EXPECT_FALSE(NeedsLibrary(needed, "libannouncement_agent"));
}

} // namespace
