#include "SetAnswer.h"

#include "Printable.h"
#include "ValueText.h"
#include "WriteState.h"

namespace workbench {

std::string AnswerText(SetAnswer const& answer, long long localDiff) {
    if (!answer.Mistake.empty()) {
        return answer.Mistake;
    }
    return Printable(answer.Asked) + " = " + ValueText(answer.Value, localDiff) + ": " +
           StageName(WriteStage::Pending);
}

}  // namespace workbench
