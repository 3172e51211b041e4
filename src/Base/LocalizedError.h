// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

#include <exception>

// Base class of all errors that may reach the user or the model; carries one complete English sentence.
// Thrown by value, caught as `const LocalizedError &`.
class LocalizedError : public std::exception
{
public:
    // The text shown to the user and fed back to the model; one line.
    virtual QString errorDescription() const = 0;

    const char *what() const noexcept override { return "LocalizedError"; }
};
