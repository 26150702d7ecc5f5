// Win32 backend of platform/Files.h (being written).
