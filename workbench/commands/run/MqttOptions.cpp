#include "MqttOptions.h"

#include <CLI/CLI.hpp>
#include <map>

#include "CommonOptions.h"
#include "Printable.h"
#include "TopicLevel.h"
#ifdef WORKBENCH_HAS_MQTT
#include "BrokerAddress.h"
#endif

namespace workbench {

namespace {

constexpr double LongestInterval = 86400;

void CheckUrl(std::string const& url) {
#ifdef WORKBENCH_HAS_MQTT
    try {
        ReadBrokerAddress(url);
    } catch (std::runtime_error const& mistake) {
        throw CLI::ValidationError("--mqtt", mistake.what());
    }
#else
    static_cast<void>(url);
#endif
}

CLI::Option& AddText(CLI::App& command, char const* name, std::string& text, char const* type,
                     std::string const& help) {
    return *command.add_option(name, text, help)->type_name(type)->needs("--mqtt");
}

void AddFiles(CLI::App& command, MqttOptions& options) {
    AddText(
        command, "--mqtt-ca", options.authorities, "FILE.pem",
        "Certificates of the authorities that may have signed that of the broker, as PEM (default: those of "
        "the system)");
    AddText(command, "--mqtt-cert", options.certificate, "FILE.pem",
            "Certificate of this client, as PEM, for a broker that asks for one");
    AddText(command, "--mqtt-key", options.key, "FILE.pem", "Its key, as PEM without a password")
        .needs("--mqtt-cert");
    command.get_option("--mqtt-cert")->needs("--mqtt-key");
    AddText(command, "--mqtt-login", options.login, "FILE",
            "The first line of FILE is the user for the broker, the second the password");
}

void AddNames(CLI::App& command, MqttOptions& options) {
    AddText(command, "--mqtt-node", options.node, "NAME",
            "Name of this workbench, unlike that of any other at the broker (default: HOST-PROJECT)")
        .check([](std::string const& name) {
            bool const isGood = !name.empty() && tools::Printable(name) == name;
            return isGood
                       ? ""
                       : tools::Quoted(name) + " is not a name; allowed is text without control characters";
        });
    AddText(command, "--mqtt-prefix", options.prefix, "TEXT",
            "What the topics of JSON begin with (default: dorvel/NODE)")
        .check([](std::string const& prefix) { return PrefixMistake(prefix); });
    static std::map<std::string, bool> const payloads = {{"json", false}, {"sparkplug", true}};
    command
        .add_option_function<std::string>(
            "--mqtt-payload",
            [&options](std::string const& name) { options.isSparkplug = payloads.at(name); },
            "Form of the messages: json or sparkplug (default: json)")
        ->type_name("FORM")
        ->check(CLI::IsMember(payloads).description(""))
        ->needs("--mqtt");
    AddText(command, "--mqtt-group", options.group, "NAME", "The group of Sparkplug B (default: dorvel)");
}

void AddNumber(CLI::App& command, char const* name, double& number, char const* type, double most,
               char const* what, char const* help) {
    command
        .add_option_function<std::string>(
            name, [=, &number](std::string const& text) { number = NumberFromZero(text, name, what, most); },
            help)
        ->type_name(type)
        ->needs("--mqtt");
}

}  // namespace

void AddMqttOptions(CLI::App& command, MqttOptions& options) {
    command
        .add_option_function<std::string>(
            "--mqtt",
            [&options](std::string const& url) {
                CheckUrl(url);
                options.isOn = true;
                options.url = url;
            },
            "Publishes the values at an MQTT broker: mqtt://HOST[:PORT], with TLS mqtts://HOST[:PORT]")
        ->type_name("URL");
    AddFiles(command, options);
    AddNames(command, options);
    command
        .add_flag("--mqtt-writes", options.hasWrites,
                  "Messages of the broker may set variables with Write = true")
        ->needs("--mqtt");
    AddNumber(command, "--mqtt-dead-band", options.deadBand, "X", 0, "a width",
              "Publishes of numbers only changes by more than X (default: 0)");
    AddNumber(command, "--mqtt-interval", options.interval, "SECONDS", LongestInterval, "a time",
              "Publishes a variable at most once in so many seconds (default: 0)");
    command
        .add_option("--mqtt-keep-alive", options.keepAlive,
                    "Seconds after which a broker that does not answer is left (default: 30)")
        ->type_name("SECONDS")
        ->check(CLI::Range(5U, 3600U).description(""))
        ->needs("--mqtt");
}

void CheckMqttOptions(MqttOptions const& options) {
    bool const hasTls = options.url.compare(0, 8, "mqtts://") == 0;
    bool const hasTlsFile = !options.authorities.empty() || !options.certificate.empty();
    if (options.isOn && hasTlsFile && !hasTls) {
        throw CLI::ValidationError(options.authorities.empty() ? "--mqtt-cert" : "--mqtt-ca",
                                   "is for TLS, but the address is without; use mqtts://HOST[:PORT]");
    }
    if (options.isSparkplug && !options.prefix.empty()) {
        throw CLI::ValidationError(
            "--mqtt-prefix",
            "is for JSON; the topics of Sparkplug B begin with spBv1.0/GROUP (--mqtt-group)");
    }
    if (!options.isSparkplug && !options.group.empty()) {
        throw CLI::ValidationError("--mqtt-group", "is for Sparkplug B; add --mqtt-payload sparkplug");
    }
}

}  // namespace workbench
