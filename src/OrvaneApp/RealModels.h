// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Models/ModelManager.h"

// The model manager with the real engine and network, for all front ends. Thread: main.
class RealModels
{
public:
    RealModels();
    // Unloads the model before the engine is destroyed.
    ~RealModels();
    RealModels(const RealModels &) = delete;
    RealModels &operator=(const RealModels &) = delete;

    ModelManager &manager() { return m_manager; }
    const ModelStorage &storage() const { return m_storage; }

private:
    const ModelStorage m_storage = ModelStorage::standard();
    ModelManager m_manager;
};
