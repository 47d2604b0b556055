#include "Decoder.h"

char Decoder::GetValue(char* position) {
    return *position;
}
