#include "ProjectWriter.h"

#include <algorithm>
#include <set>

#include "AddressArgument.h"
#include "LuaText.h"
#include "ObjectNames.h"
#include "PointChoice.h"
#include "PointNames.h"
#include "Printable.h"
#include "VariableText.h"

namespace workbench {

namespace {

constexpr std::size_t VariableIndent = 8;
// Lua has at most 200 local variables.
constexpr std::size_t MostLocals = 150;
constexpr std::uint16_t DeviceType = 8;
// Milliseconds for one object, with room to spare, and the shortest period.
constexpr std::size_t LocalObject = 5;
constexpr std::size_t RoutedObject = 50;
constexpr std::size_t ShortestPeriod = 1000;

// What the workbench loads (docs/workbench.md#of-a-project).
constexpr std::size_t LargestFile = 16'000'000;
constexpr std::size_t MostValues = 500'000;

// Each value ends with one of these; texts can have them too.
bool HasTooManyValues(std::string const& table) {
    auto const ends = std::count_if(table.begin(), table.end(), [](char c) { return c == ',' || c == '}'; });
    return static_cast<std::size_t>(ends) >= MostValues;
}

std::string Counted(std::size_t count, std::string const& what) {
    return std::to_string(count) + ' ' + what + (count == 1 ? "" : "s");
}

// A block while it is written.
struct Block {
    std::string variables;  // with the comments between them
    std::size_t count = 0;
    std::size_t written = 0;
    std::size_t comments = 0;
};

std::string ObjectComment(ObjectRecord const& object, std::string const& reason) {
    std::string const name = NameOf(object);
    return LuaComment(
        standard::ObjectText(object.id) + (name.empty() ? "" : ' ' + tools::Quoted(name)) + ": " + reason,
        VariableIndent);
}

class BlockWriter {
public:
    BlockWriter(DeviceRecord const& deviceRecord, ProjectStyle const& projectOptions)
        : device(deviceRecord), options(projectOptions) {}

    Block Write() {
        std::vector<std::string> const names = VariableNames(device.objects);
        std::set<standard::ObjectId> seen;
        for (std::size_t i = 0; i < device.objects.size(); ++i) {
            ObjectRecord const& object = device.objects[i];
            if (object.id.type == DeviceType) {
                continue;
            }
            if (seen.insert(object.id).second) {
                Add(object, names[i]);
            } else {
                Comment(object, "the device lists it more than once");
            }
        }
        return block;
    }

private:
    void Add(ObjectRecord const& object, std::string const& name) {
        PointChoice const choice = ChoosePoint(object, options.isFromDevices);
        if (!choice.reason.empty()) {
            Comment(object, choice.reason);
            if (choice.isReadable) {
                block.variables += LuaComment(
                    VariableText(object, name, choice, {false, options.isBrief}, 0) + ',', VariableIndent);
            }
            return;
        }
        bool const isWritten = options.isWritable && choice.support.canWrite && IsSettable(object);
        block.variables += std::string(VariableIndent, ' ') +
                           VariableText(object, name, choice, {isWritten, options.isBrief}, VariableIndent) +
                           ",\n";
        ++block.count;
        block.written += isWritten ? 1 : 0;
    }

    void Comment(ObjectRecord const& object, std::string const& reason) {
        block.variables += ObjectComment(object, reason);
        ++block.comments;
    }

    DeviceRecord const& device;
    ProjectStyle const& options;
    Block block;
};

std::size_t PeriodOf(DeviceRecord const& device, std::size_t objects) {
    std::size_t const time = objects * (device.peer->remote ? RoutedObject : LocalObject);
    return std::max(ShortestPeriod, (time + 999) / 1000 * 1000);
}

std::string Title(DeviceRecord const& device) {
    if (device.Instance() == standard::ObjectId::LastInstance && device.peer) {
        return AddressText(*device.peer);
    }
    std::string const name = NameOf(device.device);
    return "device " + std::to_string(device.Instance()) + (name.empty() ? "" : ' ' + tools::Quoted(name));
}

// A device that did not answer has no instance.
std::string InstanceField(DeviceRecord const& device) {
    return device.Instance() < standard::ObjectId::LastInstance
               ? ", DeviceInstance = " + std::to_string(device.Instance())
               : std::string();
}

class Writer {
public:
    Writer(Inventory const& plant, ProjectStyle const& projectOptions)
        : inventory(plant),
          options(projectOptions),
          names(BlockNames(plant)),
          parameters(ParameterNames(plant)) {}

    ProjectText Write() {
        for (std::size_t i = 0; i < inventory.devices.size(); ++i) {
            AddDevice(i);
        }
        project.text = Head() + locals + (locals.empty() ? "" : "\n") + blocks;
        project.text.pop_back();
        project.isLoadable = project.isLoadable && project.text.size() <= LargestFile;
        return std::move(project);
    }

private:
    void AddDevice(std::size_t index) {
        DeviceRecord const& device = inventory.devices[index];
        std::string const title = Title(device);
        std::string reason = WhyNotPolled(device);
        Block const block = BlockWriter(device, options).Write();
        if (reason.empty() && block.count == 0) {
            reason = device.objects.empty() ? "none of its objects could be read"
                                            : "it has no object that the driver can read";
        }
        blocks += LuaComment(Heading(device, block, reason));
        if (!reason.empty()) {
            project.leftOut.push_back(title + ": " + reason);
            blocks += (block.count == 0 ? block.variables : std::string()) + '\n';
            return;
        }
        ++project.blocks;
        project.variables += block.count;
        project.written += block.written;
        project.comments += block.comments;
        project.isLoadable = project.isLoadable && !HasTooManyValues(block.variables);
        blocks += BlockText(index, block);
    }

    std::string Heading(DeviceRecord const& device, Block const& block, std::string const& reason) const {
        std::string text = Title(device) + ": ";
        text += reason.empty()
                    ? Counted(block.count, "variable") + ", " + std::to_string(block.comments) + " not read"
                    : reason + "; it is not polled";
        for (std::string const& note : device.notes) {
            text += '\n' + tools::Printable(note);
        }
        return text;
    }

    // The expression with the address of the device, or of its router.
    std::string Address(std::size_t index) {
        std::string const value =
            "Param." + parameters[index] + " or " + LuaString(inventory.devices[index].peer->endpoint.Text());
        firstParameter = firstParameter.empty() ? parameters[index] : firstParameter;
        if (inventory.devices.size() > MostLocals) {
            return value;
        }
        locals += "local " + parameters[index] + " = " + value + '\n';
        return parameters[index];
    }

    std::string BlockText(std::size_t index, Block const& block) {
        DeviceRecord const& device = inventory.devices[index];
        std::string const name = LuaString(names[index]);
        std::string const address = Address(index);
        std::string text = "Task{ Name = " + name +
                           ", Period = " + std::to_string(PeriodOf(device, block.count)) +
                           " }\n\nBACnet.new{\n    Name = " + name + ", Task = " + name +
                           InstanceField(device) + ",\n    Address = " + address + ", MAC = ";
        if (auto const& remote = device.peer->remote) {
            text += LuaString(MacText(remote->mac)) + ", NetworkNumber = " + std::to_string(remote->network);
        } else {
            text += address;
        }
        return text + ",\n    Vars = {\n" + block.variables + "    },\n}\n\n";
    }

    std::string Head() const {
        std::string text;
        if (options.isPartial) {
            text += "PARTIAL: not everything was read; the comments say what is missing.\n\n";
        }
        text += std::string("Made by dorvel-workbench new from ") +
                (options.isFromDevices ? "what the devices answered" : "a point list") + ": " +
                Counted(project.blocks, "block") + ", " + Counted(project.variables, "variable") + ", " +
                std::to_string(project.comments) + " not read.";
        if (options.isBrief) {
            text += "\nIt is too large for descriptions and the fields of point lists (Point).";
        }
        if (!firstParameter.empty()) {
            text += "\nAnother address: --define " + firstParameter + "=192.168.1.20:47808";
        }
        return LuaComment(text) + '\n';
    }

    Inventory const& inventory;
    ProjectStyle const& options;
    std::vector<std::string> const names;
    std::vector<std::string> const parameters;
    std::string firstParameter;  // of a device with a block
    std::string locals;
    std::string blocks;
    ProjectText project;
};

}  // namespace

ProjectText WriteProject(Inventory const& inventory, ProjectStyle const& options) {
    return Writer(inventory, options).Write();
}

}  // namespace workbench
