#pragma once

#include <cstddef>
#include <deque>
#include <memory>
#include <string>
#include <vector>

#include "History.h"
#include "JsonFields.h"
#include "LogBuffer.h"
#include "ObjectInspector.h"
#include "OutletList.h"
#include "PlantMemory.h"
#include "PlantStream.h"
#include "Project.h"
#include "ValueSetter.h"

namespace workbench {

// A variable of the plant and where it is.
struct PageVariable {
    std::size_t id = 0;  // its place in the project
    BlockConfig const* block = nullptr;
    VariableConfig const* config = nullptr;
    std::size_t index = 0;  // in the block
};

// What the page shows of a run. All that it refers to must outlive it and be thread-safe, or not change.
class PagePlant {
public:
    struct Parts {
        std::string project;  // its path
        std::string version;  // of the program
        std::deque<BlockConfig> const& blocks;
        std::vector<TaskConfig> const& tasks;
        PlantMemory const& memory;
        History const& trends;  // those of memory, or longer ones
        ValueSetter& setter;
        LogBuffer& log;
        bool hasWrites;  // whether the page may set values
        OutletList const* outlets = nullptr;
    };

    explicit PagePlant(Parts runParts);
    PagePlant(Parts runParts, std::unique_ptr<ObjectInspector> objectInspector);

    Parts const& Run() const { return parts; }
    PlantStream& Stream() { return stream; }
    ObjectInspector& Inspector() { return *inspector; }
    // Null for an id that the plant does not have.
    PageVariable const* Find(std::size_t id) const;
    std::vector<PageVariable> const& Variables() const { return variables; }
    // A file time.
    long long Started() const { return started; }

private:
    Parts parts;
    long long started;
    std::vector<PageVariable> variables;
    PlantStream stream;
    std::unique_ptr<ObjectInspector> inspector;
};

// What kind of value a variable has, for those who show and edit it: "number", "state", "boolean", "text",
// "time", "weekly" or "exception".
char const* KindOf(VariableConfig const& variable);

// The blocks and variables as the project has them.
std::string PlantJson(PagePlant const& plant);
// The object of one variable there, without its end.
void WriteVariableFields(JsonWriter& writer, PageVariable const& variable);

}  // namespace workbench
