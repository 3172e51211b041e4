// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Models/ModelManager.h"

// The model manager with the real engine and the real network, for every front end. Main thread.
class RealModels
{
public:
    RealModels();
    // The engine gives its memory back before it goes.
    ~RealModels();
    RealModels(const RealModels &) = delete;
    RealModels &operator=(const RealModels &) = delete;

    ModelManager &manager() { return m_manager; }

private:
    const ModelStorage m_storage = ModelStorage::standard();
    ModelManager m_manager;
};
