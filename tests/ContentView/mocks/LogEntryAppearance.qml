// SPDX-License-Identifier: Apache-2.0
import QtQml

QtObject {
    enum Role {
        Primary,
        Secondary,
        Good,
        Bad,
        Warning
    }
}
