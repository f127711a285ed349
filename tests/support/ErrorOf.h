#pragma once

#include "RuntimeError.h"

// The number of the error that the work raises; 0 where it raises none.
template <class Work> int errorOf(const Work& work)
{
    try {
        work();
    } catch (const RuntimeError& error) {
        return error.number();
    }
    return 0;
}
