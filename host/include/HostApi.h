#pragma once

// Marks what the host's libraries offer to others; everything else in them is hidden.
#define DORVEL_HOST_API __attribute__((visibility("default")))
