// The page: a request as a browser or an attacker sends it, without the parser of HTTP. For every input: the
// answer has a status of HTTP, the headers that bind a browser, and is JSON unless it is a file; without a
// session there is nothing but the link; what the head refuses is refused as a whole. No exception leaves it.
//
// The first octet has what the request has rightly: its lowest bits are the session, the host, the token of
// the session and the type of the body. Then a line with method and target, a header a line up to an empty
// line, and the body.
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <sstream>
#include <string>
#include <system_error>
#include <vector>

#include "Addin.h"
#include "BodyObject.h"
#include "LoadedProject.h"
#include "PageService.h"
#include "QuietWorld.h"
#include "Require.h"

using fuzz::Require;
using namespace workbench;

namespace {

constexpr char Token[] = "0123456789abcdef0123456789abcdef";
constexpr char Plant[] = R"(
local function V(name, kind, object, property)
    return {Name=name, Type="DataValue", ElementType=kind, ObjectType=object, ObjectProperties=property,
            ObjectNumber=1, Write=true}
end
BACnet.new{Name="AHU", Address="192.168.1.20:47808", Vars={
    V("T", "Float", "analog-value", "present-value"), V("Week", "String", "schedule", "weekly-schedule"),
    V("Exceptions", "String", "schedule", "exception-schedule")}}
)";

enum Right : unsigned { HasSession = 1, HasHost = 2, HasToken = 4, IsJson = 8 };

// A run that has not begun, and its page. There is no network for the inspector.
class Page {
public:
    Page() : guard(sessions, AllowedHosts({"127.0.0.1", 8080}, {"plant.example"}), 8080) {
        fuzz::QuietWorld::Enter();
        project.Load(SourceText(Plant));
        setter = std::make_unique<ValueSetter>(project.Runtime(), log);
        std::vector<SharedSnapshot> first;
        for (BlockConfig const& block : project.Blocks()) {
            first.push_back(
                std::make_shared<BlockSnapshot const>(TakeSnapshot(block, 0, project.Runtime().Variables())));
        }
        memory = std::make_unique<PlantMemory>(project.Blocks(), first, true);
        plant = std::make_unique<PagePlant>(
            PagePlant::Parts{"p.lua", "1", project.Blocks(), project.Tasks(), *memory, memory->trends,
                             *setter, log, true},
            std::make_unique<ObjectInspector>([]() -> std::unique_ptr<standard::Link> {
                throw std::system_error(ENETDOWN, std::generic_category());
            }));
        service = std::make_unique<PageService>(*plant, guard, files);
        sessions.Open(Token, "127.0.0.1", session);
    }

    Sessions sessions{Token};
    Sessions::Session session;
    std::unique_ptr<PageService> service;

private:
    RequestGuard guard;
    LogBuffer log{nullptr};
    LoadedProject project{"p.lua", {}};
    std::unique_ptr<ValueSetter> setter;
    std::unique_ptr<PlantMemory> memory;
    std::unique_ptr<PagePlant> plant;
    std::vector<PageFile> const files = {{"/index.html", "text/html", "<!DOCTYPE html>", "\"1\""}};
};

void ReadTarget(std::string const& target, HttpRequest& request) {
    std::size_t const mark = std::min(target.find('?'), target.size());
    request.path = target.substr(0, mark);
    std::istringstream pairs(target.substr(std::min(mark + 1, target.size())));
    for (std::string pair; std::getline(pairs, pair, '&');) {
        std::size_t const equals = std::min(pair.find('='), pair.size());
        request.parameters.emplace(pair.substr(0, equals), pair.substr(std::min(equals + 1, pair.size())));
    }
}

void AddRights(unsigned rights, Sessions::Session const& session, HttpRequest& request) {
    if (rights & HasSession) {
        request.headers.emplace("cookie", "dorvel_page_8080=" + session.id);
    }
    if (rights & HasHost) {
        request.headers.emplace("host", "127.0.0.1:8080");
    }
    if (rights & HasToken) {
        request.headers.emplace("x-page-token", session.token);
    }
    if (rights & IsJson) {
        request.headers.emplace("content-type", "application/json");
    }
}

HttpRequest ReadRequest(std::string const& input, Sessions::Session const& session) {
    HttpRequest request;
    request.sender = "127.0.0.1";
    AddRights(input.empty() ? 0 : static_cast<unsigned char>(input.front()), session, request);
    std::istringstream text(input.substr(std::min<std::size_t>(1, input.size())));
    std::string target;
    std::getline(text, request.method, ' ');
    std::getline(text, target);
    ReadTarget(target, request);
    for (std::string line; std::getline(text, line) && !line.empty();) {
        std::size_t const colon = std::min(line.find(':'), line.size());
        request.headers.emplace(line.substr(0, colon), line.substr(std::min(colon + 1, line.size())));
    }
    request.body.assign(std::istreambuf_iterator<char>(text), {});
    return request;
}

bool HasHeader(HttpResponse const& response, std::string const& name) {
    for (auto const& header : response.headers) {
        Require(header.second.find_first_of("\r\n") == std::string::npos, "a header is one line");
        if (header.first == name) {
            return true;
        }
    }
    return false;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    static int const added = dorvel::BACnet::Init();
    Require(added == 0, "the add-in starts");
    static Page page;
    std::string const input(reinterpret_cast<char const*>(data), size);
    HttpRequest const request = ReadRequest(input, page.session);
    bool const isRefused = page.service->Refusal(request).has_value();
    HttpResponse const response = page.service->Answer(request);
    Require(response.status >= 200 && response.status < 600, "an answer has a status");
    Require(!isRefused || response.status >= 400, "what the head refuses is refused");
    Require(HasHeader(response, "Content-Security-Policy"), "an answer binds the browser");
    Require(HasHeader(response, "X-Content-Type-Options"), "an answer has its type");
    bool const isSignedIn = (static_cast<unsigned>(input.empty() ? 0 : input.front()) & HasSession) != 0;
    Require(isSignedIn || response.status != 200 || RequestGuard::IsSignIn(request), "a session is needed");
    if (response.type == "application/json" && !response.body.empty()) {
        Require(BodyObject(response.body).Mistake().empty(), "the answer is a JSON object");
    }
    return 0;
}
