#pragma once

// The flags in the first octet of a confirmed request and of a complex ack (ASHRAE 135 clauses 20.1.2
// and 20.1.5).
constexpr int SegmentedMessageBit = 0x08;
constexpr int MoreFollowsBit = 0x04;
constexpr int SegmentedResponseAcceptedBit = 0x02;
