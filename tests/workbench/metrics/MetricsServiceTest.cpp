#include "MetricsService.h"

#include <gtest/gtest.h>

using namespace workbench;

namespace {

HttpRequest Request(std::string const& method, std::string const& path, std::string const& host) {
    HttpRequest request;
    request.method = method;
    request.path = path;
    request.headers = {{"host", host}};
    return request;
}

TEST(MetricsService, AnswersAScrapeWithItsFormat) {
    MetricsService const service({"127.0.0.1", 9100}, [] { return std::string("a 1\n"); });
    HttpResponse const response = service.Answer(Request("GET", "/metrics", "127.0.0.1:9100"));
    EXPECT_EQ(response.status, 200);
    EXPECT_EQ(response.type, "text/plain; version=0.0.4; charset=utf-8");
    EXPECT_EQ(response.body, "a 1\n");
}

TEST(MetricsService, HasNoOtherPathAndMethod) {
    MetricsService const service({"127.0.0.1", 9100}, [] { return std::string("a 1\n"); });
    EXPECT_EQ(service.Answer(Request("GET", "/", "127.0.0.1:9100")).status, 404);
    EXPECT_EQ(service.Answer(Request("GET", "/metrics/", "127.0.0.1:9100")).status, 404);
    HttpResponse const response = service.Answer(Request("POST", "/metrics", "127.0.0.1:9100"));
    EXPECT_EQ(response.status, 405);
    EXPECT_EQ(response.headers.back(), (std::pair<std::string, std::string>("Allow", "GET, HEAD")));
}

TEST(MetricsService, OnLoopbackRefusesANameThatWasReboundToThisMachine) {
    MetricsService const service({"127.0.0.1", 9100}, [] { return std::string("a 1\n"); });
    EXPECT_EQ(service.Answer(Request("GET", "/metrics", "evil.example:9100")).status, 403);
    EXPECT_EQ(service.Answer(Request("GET", "/metrics", "localhost:9100")).status, 200);
}

TEST(MetricsService, ElsewhereIsFoundByAnyName) {
    MetricsService const service({"0.0.0.0", 9100}, [] { return std::string("a 1\n"); });
    EXPECT_EQ(service.Answer(Request("GET", "/metrics", "plant.example:9100")).status, 200);
}

}  // namespace
