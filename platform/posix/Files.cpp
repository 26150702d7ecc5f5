// POSIX backend of platform/Files.h (being written).
