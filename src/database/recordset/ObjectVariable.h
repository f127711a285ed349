#pragma once

#include "RuntimeError.h"

#include <memory>

// A variable that holds an object or nothing. Use while it holds nothing is error 91, never a
// crash; the object lives at least to the end of the statement that uses it, also when an event
// fired by that statement replaces it.
template <class T> class ObjectVariable
{
public:
    void create() { object_ = std::make_shared<T>(); }
    void setNothing() { object_.reset(); }
    bool isNothing() const { return !object_; }

    std::shared_ptr<T> operator->() const
    {
        if (!object_)
            throw RuntimeError(RuntimeError::ObjectNotSet);
        return object_;
    }
    const std::shared_ptr<T>& shared() const { return object_; }

private:
    std::shared_ptr<T> object_;
};
