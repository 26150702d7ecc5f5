#pragma once
// Test control of the native backends, the twin of the allocation seam: every call of
// platform/Files.h that reaches the disk, and every step of the link stand-in, passes
// IoCalls; those that change a file (create, write, flush, move, delete, attributes, a copy,
// a stream opened for writing, a link's save, move or delete) pass IoWrites too.
//
// A test fails one call, IoCalls().FailAt(n), or stops every write from one on, as a crash
// would leave the disk: IoWrites().FailAt(n, CFaultSeam::Onwards). A failed file call answers
// as the disk would, with its error for LastFileError: a write puts out half its bytes and then
// finds the disk full (112), an open finds the file locked (32), any other call is denied (5).

#include "text/Faults.h"

CFaultSeam& IoCalls();
CFaultSeam& IoWrites();
long OpenFiles();   // file handles and streams given out and not closed yet
