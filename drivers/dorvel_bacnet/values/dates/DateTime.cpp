#include "DateTime.h"

#include "FileTime.h"

DateTime::DateTime(Date datePart, Time timePart) : date(datePart), time(timePart) {}

DateTime::DateTime(unsigned long long fileTime) : date(fileTime), time(fileTime) {}

unsigned long long DateTime::ToFileTime() const {
    return date.ToFileTime() + time.ToFileTime();
}

int DateTime::Compare(DateTime& other) const {
    return CompareFileTimes(ToFileTime(), other.ToFileTime());
}
