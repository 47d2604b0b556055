#pragma once

#include <string>

namespace CLI {
class App;
}

namespace workbench {

// What the command run publishes at an MQTT broker, and how it gets there.
struct MqttOptions {
    bool isOn = false;
    std::string url;  // as ReadBrokerAddress reads it
    // Files; empty: none.
    std::string authorities;
    std::string certificate;
    std::string key;
    std::string login;
    std::string node;    // empty: the name of this machine and that of the project
    std::string prefix;  // empty: "dorvel/NODE"
    bool isSparkplug = false;
    std::string group;  // empty: "dorvel"
    bool hasWrites = false;
    double deadBand = 0;
    double interval = 0;  // seconds
    unsigned keepAlive = 30;
};

// --mqtt and the options that begin with --mqtt-. The options must outlive the command.
void AddMqttOptions(CLI::App& command, MqttOptions& options);

// Throws an exception that becomes a mistake on the command line for options that do not go together. Call it
// when the command line is complete.
void CheckMqttOptions(MqttOptions const& options);

}  // namespace workbench
