// SPDX-License-Identifier: Apache-2.0
#include "Inference/InferenceError.h"

using namespace Qt::StringLiterals;

QString InferenceError::errorDescription() const
{
    switch (m_code) {
    case Code::NotLoaded:
        return u"The language model isn't loaded yet."_s;
    case Code::TooLittleMemory:
        return u"There isn't enough free memory for this model. Close other programs and try again."_s;
    case Code::LoadFailed:
        return u"Couldn't load the model file."_s;
    case Code::ContextFailed:
        return u"Couldn't create an inference context."_s;
    case Code::TokenizeFailed:
        return u"Couldn't tokenize the prompt."_s;
    case Code::DecodeFailed:
        return u"The model failed while generating."_s;
    }
    Q_UNREACHABLE();
}
