#include "SetAnswer.h"

#include "Printable.h"
#include "ValueText.h"
#include "WriteState.h"

namespace workbench {

std::string AnswerText(SetAnswer const& answer, long long localDiff) {
    if (!answer.mistake.empty()) {
        return answer.mistake;
    }
    return tools::Printable(answer.target) + " = " + ValueText(answer.value, localDiff) + ": " +
           StageName(WriteStage::Pending);
}

}  // namespace workbench
