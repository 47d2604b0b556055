#pragma once

#include <gtest/gtest.h>
#include <rapidjson/document.h>

#include <cerrno>
#include <functional>
#include <memory>
#include <string>
#include <system_error>
#include <vector>

#include "FollowedRun.h"
#include "PageService.h"
#include "Snapshot.h"

namespace test {

// A run of two blocks with its page: the first one has a number and a state that can be set and a text, the
// second one a schedule and a calendar.
class PageTest : public FollowedRun {
protected:
    static constexpr char Token[] = "0123456789abcdef0123456789abcdef";
    static constexpr char Host[] = "127.0.0.1:8080";

    PageTest() : FollowedRun(ProjectText(), 133503000000000000, true) {
        guard = std::make_unique<workbench::RequestGuard>(
            sessions, workbench::AllowedHosts({"127.0.0.1", 8080}, {"plant.example"}), 8080);
        MakePage(true);
        sessions.Open(Token, "127.0.0.1", session);
    }

    void MakePage(bool hasWrites) {
        auto const noNetwork = []() -> std::unique_ptr<standard::Link> {
            throw std::system_error(ENETDOWN, std::generic_category());
        };
        plant = std::make_unique<workbench::PagePlant>(
            workbench::PagePlant::Parts{"p.lua", "1.2.3", project.Blocks(), project.Tasks(), *memory,
                                        memory->trends, *setter, log, hasWrites, &outlets},
            std::make_unique<workbench::ObjectInspector>(noNetwork));
        service = std::make_unique<workbench::PageService>(*plant, *guard, files);
    }

    static std::string ProjectText() {
        std::string const number =
            "{Name='T', Type='DataValue', ElementType='Float', ObjectType='analog-value', "
            "ObjectProperties='present-value', ObjectNumber=1, Write=true, Unit='degrees-celsius', "
            "Description='Supply'}";
        std::string const state =
            "{Name='Mode', Type='DataValue', ElementType='UInt32', ObjectType='multi-state-value', "
            "ObjectProperties='present-value', ObjectNumber=2, Write=true, StateTexts={'off', 'on'}}";
        std::string const text =
            "{Name='Name', Type='DataValue', ElementType='String', ObjectType='analog-value', "
            "ObjectProperties='present-value', ObjectNumber=3}";
        std::string const week =
            "{Name='Week', Type='DataValue', ElementType='String', ObjectType='schedule', "
            "ObjectProperties='weekly-schedule', ObjectNumber=1, Write=true}";
        std::string const exceptions =
            "{Name='Exceptions', Type='DataValue', ElementType='String', ObjectType='schedule', "
            "ObjectProperties='exception-schedule', ObjectNumber=1}";
        return Block(R"(Name="AHU", Address="192.168.1.20:47808")", number + ", " + state + ", " + text) +
               Block(R"(Name="Rooms", Address="192.168.1.21:47808")", week + ", " + exceptions);
    }

    void Cycle(FakeDriver& driver) override {
        if (driver.variables.size() == 3) {
            driver.Deliver(0, temperature);
            driver.Deliver(1, mode);
            driver.Deliver(2, Text(label));
        } else {
            driver.Deliver(0, Text(week));
            driver.Deliver(1, Text(exceptions));
        }
        driver.Report(false, "");
        driver.WritePhase([](std::size_t, OpcUa_VariantHlp const&) {});
    }

    void Complete(workbench::BlockSnapshot& snapshot) override {
        if (complete) {
            complete(snapshot);
        }
        if (!suspect.empty()) {
            snapshot.variables.front().suspect = suspect;
        }
    }

    // A cycle of both blocks, a second after the one before.
    void Run(int cycles = 1) {
        for (int i = 0; i < cycles; ++i) {
            RunOnce();
        }
    }

    // A request of this page's own script.
    workbench::HttpRequest Request(std::string const& method, std::string const& target) const {
        workbench::HttpRequest request;
        request.method = method;
        std::size_t const mark = target.find('?');
        request.path = target.substr(0, mark);
        std::string rest = mark == std::string::npos ? "" : target.substr(mark + 1);
        while (!rest.empty()) {
            std::size_t const end = std::min(rest.find('&'), rest.size());
            std::string const pair = rest.substr(0, end);
            std::size_t const equals = pair.find('=');
            request.parameters.emplace(pair.substr(0, equals), pair.substr(equals + 1));
            rest.erase(0, end + 1);
        }
        request.headers = {{"host", Host}, {"cookie", "dorvel_page_8080=" + session.id}};
        request.sender = "127.0.0.1";
        return request;
    }

    workbench::HttpRequest PostRequest(std::string const& target, std::string const& body) const {
        workbench::HttpRequest request = Request("POST", target);
        request.headers.emplace("x-page-token", session.token);
        request.headers.emplace("content-type", "application/json");
        request.headers.emplace("origin", std::string("http://") + Host);
        request.body = body;
        return request;
    }

    workbench::HttpResponse Get(std::string const& target) const {
        return service->Answer(Request("GET", target));
    }
    workbench::HttpResponse Post(std::string const& target, std::string const& body) const {
        return service->Answer(PostRequest(target, body));
    }

    static std::string HeaderOf(workbench::HttpResponse const& response, std::string const& name) {
        for (auto const& header : response.headers) {
            if (header.first == name) {
                return header.second;
            }
        }
        return {};
    }

    OpcUa_VariantHlp temperature = Float(20.5F);
    OpcUa_VariantHlp mode = Number(1);
    std::string label = "Supply";
    std::string week;
    std::string exceptions;
    std::string suspect;
    std::function<void(workbench::BlockSnapshot& snapshot)> complete;  // what the test adds to each cycle
    workbench::OutletList outlets;
    std::unique_ptr<workbench::PagePlant> plant;
    workbench::Sessions sessions{Token};
    workbench::Sessions::Session session;
    std::unique_ptr<workbench::RequestGuard> guard;
    std::vector<workbench::PageFile> const files = {{"/index.html", "text/html", "<!DOCTYPE html>", "\"1\""},
                                                    {"/page.css", "text/css", "p {}", "\"2\""}};
    std::unique_ptr<workbench::PageService> service;

private:
    static OpcUa_VariantHlp Number(unsigned value) {
        OpcUa_VariantHlp variant;
        variant.SetUInt(value);
        return variant;
    }
};

}  // namespace test
