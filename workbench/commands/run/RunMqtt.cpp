#include "RunMqtt.h"

#ifdef WORKBENCH_HAS_MQTT

#include <unistd.h>

#include <filesystem>

#include "ClientId.h"
#include "JsonPublisher.h"
#include "MqttOutlet.h"
#include "SparkplugPublisher.h"

namespace workbench {

namespace {

constexpr double UnitsPerSecond = 1e7;  // of file times

std::string DefaultNode(std::string const& project) {
    char host[256] = "";
    gethostname(host, sizeof host - 1);
    return std::string(host) + "-" + std::filesystem::path(project).stem().string();
}

PublishSettings SettingsOf(MqttOptions const& options, std::string const& project) {
    PublishSettings settings;
    settings.node = options.node.empty() ? DefaultNode(project) : options.node;
    settings.prefix = options.prefix;
    settings.group = options.group.empty() ? "dorvel" : options.group;
    settings.deadBand = options.deadBand;
    settings.interval = static_cast<long long>(options.interval * UnitsPerSecond);
    settings.takesCommands = options.hasWrites;
    return settings;
}

BrokerLogin LoginOf(MqttOptions const& options, BrokerAddress const& address, LogBuffer& log) {
    if (options.login.empty()) {
        return {};
    }
    BrokerLogin login = ReadLoginFile(options.login);
    if (!login.warning.empty()) {
        log.Add("mqtt: warning: " + login.warning);
    }
    if (!address.isTls) {
        log.Add(
            "mqtt: warning: without TLS everybody on the way can read the user and the password; use "
            "mqtts://");
    }
    return login;
}

}  // namespace

std::unique_ptr<Outlet> MakeMqtt(MqttOptions const& options, OutletParts const& parts) {
    if (!options.isOn) {
        return nullptr;
    }
    PublishSettings const publishing = SettingsOf(options, parts.project);
    BrokerSettings broker;
    broker.address = ReadBrokerAddress(options.url);
    broker.clientId = ClientIdOf(publishing.node);
    broker.login = LoginOf(options, broker.address, parts.log);
    broker.keepAlive = std::chrono::seconds(options.keepAlive);
    std::optional<TlsFiles> tls;
    if (broker.address.isTls) {
        tls = TlsFiles{options.authorities, options.certificate, options.key};
    }
    auto const makePublisher = [&](OutletStatus& status) -> std::unique_ptr<Publisher> {
        if (options.isSparkplug) {
            return std::make_unique<SparkplugPublisher>(publishing, parts, status);
        }
        return std::make_unique<JsonPublisher>(publishing, parts, status);
    };
    return std::make_unique<MqttOutlet>(broker, tls, makePublisher, parts.memory.board, parts.log);
}

}  // namespace workbench

#else

#include <stdexcept>

namespace workbench {

std::unique_ptr<Outlet> MakeMqtt(MqttOptions const& options, OutletParts const&) {
    if (options.isOn) {
        throw std::runtime_error("--mqtt: this program was built without MQTT (DORVEL_MQTT)");
    }
    return nullptr;
}

}  // namespace workbench

#endif
