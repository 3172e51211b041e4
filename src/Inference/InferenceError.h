// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Base/LocalizedError.h"

// Engine errors; each has one fixed description.
class InferenceError : public LocalizedError
{
public:
    enum class Code { NotLoaded, TooLittleMemory, LoadFailed, ContextFailed, TokenizeFailed, DecodeFailed };

    explicit InferenceError(Code code) : m_code(code) {}

    Code code() const { return m_code; }
    QString errorDescription() const override;

    friend bool operator==(const InferenceError &left, const InferenceError &right)
    {
        return left.m_code == right.m_code;
    }

private:
    Code m_code;
};
