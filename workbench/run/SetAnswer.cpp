#include "SetAnswer.h"

#include "Printable.h"
#include "ShownValue.h"
#include "ValueText.h"
#include "WriteState.h"

namespace workbench {

std::string AnswerText(SetAnswer const& answer, long long localDiff) {
    if (!answer.mistake.empty()) {
        return answer.mistake;
    }
    std::string const value = answer.variable ? ShownValue(*answer.variable, answer.value, localDiff)
                                              : ValueText(answer.value, localDiff);
    return tools::Printable(answer.target) + " = " + value + ": " + StageName(WriteStage::Pending);
}

}  // namespace workbench
