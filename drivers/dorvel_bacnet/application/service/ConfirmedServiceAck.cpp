#include "ConfirmedServiceAck.h"

int ConfirmedServiceAck::Compare(ConfirmedServiceAck&) const {
    return 0;
}
