#include "ReleaseTargets.h"

#include <algorithm>
#include <new>

#include "BlockAddress.h"
#include "ProjectScript.h"
#include "PropertyId.h"
#include "StandInDriver.h"

namespace workbench {

namespace {

void Add(std::vector<ReleaseTarget>& targets, BlockConfig const& block, VariableConfig const& variable) {
    bool const isPresentValue =
        variable.property->bacnetNumber == static_cast<int>(standard::PropertyId::Present_Value);
    if (!variable.write || !isPresentValue) {
        return;
    }
    ReleaseTarget const target{PeerOf(block),
                               {static_cast<std::uint16_t>(variable.objectType->bacnetNumber),
                                static_cast<std::uint32_t>(variable.objectNumber)},
                               block.name + "." + variable.name};
    bool const isKnown = std::any_of(targets.begin(), targets.end(), [&](ReleaseTarget const& other) {
        return other.peer == target.peer && other.object == target.object;
    });
    if (!isKnown) {
        targets.push_back(target);
    }
}

}  // namespace

std::vector<ReleaseTarget> WritablePointsOf(std::string const& project, Params const& params) {
    ProjectScript script(project, params, {}, ProjectScript::OnMistake::Throw);
    if (!OpenStandInDriver(script.State()) || !script.InstallNames()) {
        throw std::bad_alloc();
    }
    script.Read(SourceText::FromFile(project), nullptr);
    std::vector<ReleaseTarget> targets;
    for (BlockConfig const& block : script.Blocks()) {
        for (VariableConfig const& variable : block.variables) {
            Add(targets, block, variable);
        }
    }
    return targets;
}

}  // namespace workbench
