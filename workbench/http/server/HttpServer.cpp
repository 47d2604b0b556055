#include "HttpServer.h"

#include <arpa/inet.h>
#include <httplib.h>

#include <cerrno>
#include <condition_variable>
#include <cstring>
#include <exception>
#include <memory>
#include <mutex>
#include <set>
#include <stdexcept>
#include <thread>

#include "BackgroundThread.h"
#include "RequestGate.h"
#include "WorkerThreads.h"

namespace workbench {

namespace {

constexpr std::chrono::milliseconds WaitForMessages{1000};
constexpr std::chrono::milliseconds TimeToEnd{500};

void AddressOf(int socket, std::string& ip, int& port, decltype(getpeername)* function) {
    sockaddr_storage place{};
    socklen_t length = sizeof place;
    if (function(socket, reinterpret_cast<sockaddr*>(&place), &length) != 0) {
        return;
    }
    char text[INET6_ADDRSTRLEN] = "";
    if (place.ss_family == AF_INET6) {
        auto const& address = reinterpret_cast<sockaddr_in6 const&>(place);
        inet_ntop(AF_INET6, &address.sin6_addr, text, sizeof text);
        port = ntohs(address.sin6_port);
    } else {
        auto const& address = reinterpret_cast<sockaddr_in const&>(place);
        inet_ntop(AF_INET, &address.sin_addr, text, sizeof text);
        port = ntohs(address.sin_port);
    }
    ip = text;
}

// A connection as the library reads and writes it. Later versions of it have more functions, so that none is
// marked as one of them.
class GatedStream : public httplib::Stream {
public:
    explicit GatedStream(int connectedSocket)
        : handle(connectedSocket), gate(connectedSocket, GateLimits()) {}

    RequestGate& Gate() { return gate; }
    // The request is answered before it is read to its end, perhaps.
    void MarkRefused() { isRefused = true; }
    bool IsRefused() const { return isRefused; }

    bool is_readable() const { return true; }
    bool is_writable() const { return gate.IsConnected(); }
    bool wait_readable() const { return true; }
    bool wait_writable() const { return gate.IsConnected(); }
    ssize_t read(char* octets, size_t size) { return gate.Read(octets, size); }
    ssize_t write(char const* octets, size_t size) { return gate.Write(octets, size); }
    void get_remote_ip_and_port(std::string& ip, int& port) const {
        AddressOf(handle, ip, port, getpeername);
    }
    void get_local_ip_and_port(std::string& ip, int& port) const { AddressOf(handle, ip, port, getsockname); }
    socket_t socket() const { return handle; }
    time_t duration() const { return 0; }

private:
    int handle;
    RequestGate gate;
    bool isRefused = false;
};

// The connection of the request that this thread answers.
thread_local GatedStream* current = nullptr;

struct UnreadRequest {
    int status = 200;
    std::string text;
};

// What is wrong with a request that cannot be read; status 200 if nothing is.
UnreadRequest ProblemOf(RequestGate::Outcome outcome) {
    GateLimits const limits;
    switch (outcome) {
        case RequestGate::Outcome::TooSlow:
            return {408, "the request has taken longer than " +
                             std::to_string(limits.request.count() / 1000) + " s"};
        case RequestGate::Outcome::LineTooLong:
            return {414,
                    "the first line of the request has more than " + std::to_string(limits.line) + " octets"};
        case RequestGate::Outcome::HeadTooLarge:
            return {431,
                    "the headers of the request have more than " + std::to_string(limits.head) + " octets"};
        case RequestGate::Outcome::BodyTooLarge:
            return {413, "the body of the request has more than " + std::to_string(limits.body) + " octets"};
        default:
            return {};
    }
}

char const* AdviceFor(int error) {
    return error == EADDRINUSE || error == EACCES ? "give another port, or none for a free one"
                                                  : "give an address of this machine, or none for 127.0.0.1";
}

char const* ReasonOf(int status) {
    switch (status) {
        case 408:
            return "Request Timeout";
        case 414:
            return "URI Too Long";
        case 431:
            return "Request Header Fields Too Large";
        default:
            return "Service Unavailable";
    }
}

// An answer without the library, for a request that it does not get.
std::string RawText(HttpResponse const& response) {
    std::string text =
        "HTTP/1.1 " + std::to_string(response.status) + " " + ReasonOf(response.status) + "\r\n";
    for (auto const& [name, value] : response.headers) {
        text += name + ": " + value + "\r\n";
    }
    return text + "Connection: close\r\nContent-Type: " + response.type +
           "\r\nContent-Length: " + std::to_string(response.body.size()) + "\r\n\r\n" + response.body;
}

HttpRequest RequestOf(httplib::Request const& from) {
    HttpRequest request;
    request.method = from.method;
    request.path = from.path;
    request.parameters = {from.params.begin(), from.params.end()};
    for (auto const& [name, value] : from.headers) {
        std::string lower = name;
        for (char& c : lower) {
            c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
        }
        request.headers.emplace(lower, value);
    }
    request.body = from.body;
    request.sender = from.remote_addr;
    return request;
}

void Fill(httplib::Response& to, HttpResponse const& from) {
    if (current && from.status >= 400) {
        current->MarkRefused();
    }
    to.status = from.status;
    for (auto const& [name, value] : from.headers) {
        to.set_header(name, value);
    }
    if (!from.isStream) {
        to.set_content(from.body, from.type);
    }
}

// Lets one version of the library or the other answer a request.
template <typename Server>
bool Process(Server& server,
             bool (Server::*function)(httplib::Stream&, bool, bool&,
                                      std::function<void(httplib::Request&)> const&),
             httplib::Stream& stream, std::function<void(httplib::Request&)> const& prepare) {
    bool isClosed = false;
    return (server.*function)(stream, true, isClosed, prepare);
}

template <typename Server>
bool Process(Server& server,
             bool (Server::*function)(httplib::Stream&, std::string const&, int, std::string const&, int,
                                      bool, bool&, std::function<void(httplib::Request&)> const&),
             httplib::Stream& stream, std::function<void(httplib::Request&)> const& prepare) {
    bool isClosed = false;
    std::string remote;
    std::string local;
    int remotePort = 0;
    int localPort = 0;
    stream.get_remote_ip_and_port(remote, remotePort);
    stream.get_local_ip_and_port(local, localPort);
    return (server.*function)(stream, remote, remotePort, local, localPort, true, isClosed, prepare);
}

}  // namespace

// The library's server: its accepting thread, its parser and its writer of answers.
class HttpServer::Library : public httplib::Server {
public:
    Library();
    ~Library() override { End(); }

    int Bind(HttpAddress const& place);
    void Begin(HttpService const& httpService);
    void End();

private:
    bool process_and_close_socket(socket_t socket) override;

    void ServeSafely(GatedStream& stream);
    void Serve(GatedStream& stream);
    HandlerResponse AnswerHead(httplib::Request const& request, httplib::Response& response);
    void Answer(httplib::Request const& request, httplib::Response& response);
    void AnswerStream(HttpRequest const& request, HttpResponse const& head, httplib::Response& response);
    void CloseAll();

    HttpService const* service = nullptr;
    std::thread accepting;
    std::mutex mutex;
    std::condition_variable closed;
    std::set<socket_t> open;
};

HttpServer::Library::Library() {
    new_task_queue = [this] { return new WorkerThreads(service->MostStreams() + MostRequests, MostWaiting); };
    // The library's own option lets another program listen at the same port.
    set_socket_options([](socket_t socket) {
        int const yes = 1;
        setsockopt(socket, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
    });
    set_tcp_nodelay(true);
    set_payload_max_length(GateLimits().body);
    set_pre_routing_handler([this](httplib::Request const& request, httplib::Response& response) {
        return AnswerHead(request, response);
    });
    Post(R"([\s\S]*)",
         [this](httplib::Request const& request, httplib::Response& response) { Answer(request, response); });
    set_error_handler([this](httplib::Request const&, httplib::Response& response) {
        if (response.body.empty()) {
            UnreadRequest unread = current ? ProblemOf(current->Gate().LastOutcome()) : UnreadRequest();
            if (unread.status == 200) {
                unread = {response.status, "the request cannot be read"};
            }
            Fill(response, service->Failure(unread.status, unread.text));
        }
    });
}

int HttpServer::Library::Bind(HttpAddress const& place) {
    errno = 0;
    if (place.port == 0) {
        return bind_to_any_port(place.address);
    }
    return bind_to_port(place.address, place.port) ? place.port : -1;
}

void HttpServer::Library::Begin(HttpService const& httpService) {
    service = &httpService;
    accepting = StartBackgroundThread([this] { listen_after_bind(); });
    while (!is_running()) {
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
}

void HttpServer::Library::End() {
    if (!accepting.joinable()) {
        return;
    }
    {
        std::unique_lock<std::mutex> lock(mutex);
        closed.wait_for(lock, TimeToEnd, [this] { return open.empty(); });
    }
    stop();
    CloseAll();
    accepting.join();
}

void HttpServer::Library::CloseAll() {
    std::lock_guard<std::mutex> const lock(mutex);
    for (socket_t const socket : open) {
        shutdown(socket, SHUT_RDWR);
    }
}

bool HttpServer::Library::process_and_close_socket(socket_t socket) {
    {
        std::lock_guard<std::mutex> const lock(mutex);
        open.insert(socket);
    }
    GatedStream stream(socket);
    if (WorkerThreads::IsRefusing()) {
        // The accepting thread must not wait.
        std::string const text = RawText(service->Failure(503, "too many connections; try again"));
        send(socket, text.data(), text.size(), MSG_DONTWAIT | MSG_NOSIGNAL);
    } else {
        ServeSafely(stream);
    }
    std::lock_guard<std::mutex> const lock(mutex);
    open.erase(socket);
    close(socket);
    closed.notify_all();
    return true;
}

// Whatever goes wrong with a connection, such as memory that the system does not have, ends no more than it.
void HttpServer::Library::ServeSafely(GatedStream& stream) {
    try {
        Serve(stream);
    } catch (std::exception const&) {
        current = nullptr;
    }
}

void HttpServer::Library::Serve(GatedStream& stream) {
    RequestGate::Outcome const outcome = stream.Gate().ReadHead();
    if (outcome == RequestGate::Outcome::Closed) {
        return;
    }
    if (outcome != RequestGate::Outcome::Ready) {
        UnreadRequest const unread = ProblemOf(outcome);
        std::string const text = RawText(service->Failure(unread.status, unread.text));
        stream.Gate().Write(text.data(), text.size());
        stream.MarkRefused();
    } else {
        current = &stream;
        Process<httplib::Server>(*this, &Library::process_request, stream, [](httplib::Request& request) {
            // Parts of files are of no use here, and compression would cost time that the cycles need.
            request.ranges.clear();
            request.headers.erase("Range");
            request.headers.erase("Accept-Encoding");
        });
        current = nullptr;
    }
    if (stream.IsRefused()) {
        stream.Gate().Finish();
    }
}

// Answers everything but a POST that may be answered, whose body is read first.
httplib::Server::HandlerResponse HttpServer::Library::AnswerHead(httplib::Request const& request,
                                                                 httplib::Response& response) {
    if (request.method != "POST") {
        Answer(request, response);
        return HandlerResponse::Handled;
    }
    auto const refusal = service->Refusal(RequestOf(request));
    if (!refusal) {
        return HandlerResponse::Unhandled;
    }
    Fill(response, *refusal);
    return HandlerResponse::Handled;
}

void HttpServer::Library::Answer(httplib::Request const& request, httplib::Response& response) {
    try {
        HttpRequest const asked = RequestOf(request);
        HttpResponse const answer = service->Answer(asked);
        if (answer.isStream && request.method == "GET") {
            AnswerStream(asked, answer, response);
        } else {
            Fill(response, answer);
        }
    } catch (std::exception const&) {
        Fill(response, service->Failure(500, "this answer has failed in the program"));
    }
}

void HttpServer::Library::AnswerStream(HttpRequest const& request, HttpResponse const& head,
                                       httplib::Response& response) {
    std::shared_ptr<HttpStream> const reader = service->OpenStream(request);
    if (!reader) {
        Fill(response, service->TooManyStreams());
        return;
    }
    current->Gate().BeginStream();
    Fill(response, head);
    response.set_content_provider(head.type, [reader](std::size_t, httplib::DataSink& sink) {
        for (SharedText const& text : reader->Next(WaitForMessages)) {
            if (!sink.write(text->data(), text->size())) {
                return false;
            }
        }
        if (reader->IsOver()) {
            sink.done();
        }
        return true;
    });
}

HttpServer::HttpServer(HttpAddress const& listening, std::string const& option)
    : address(listening), library(std::make_unique<Library>()) {
    int const port = library->Bind(address);
    if (port <= 0) {
        int const error = errno ? errno : EADDRNOTAVAIL;
        throw std::runtime_error(option + ": cannot listen at " + HostText(address) + ": " +
                                 std::strerror(error) + "; " + AdviceFor(error));
    }
    address.port = port;
}

HttpServer::~HttpServer() {
    Stop();
}

void HttpServer::Start(HttpService const& service) {
    library->Begin(service);
}

void HttpServer::Stop() {
    library->End();
}

}  // namespace workbench
