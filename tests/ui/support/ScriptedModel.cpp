// SPDX-License-Identifier: Apache-2.0
#include "ui/support/ScriptedModel.h"

#include "Inference/TinyModel.h"

void ScriptedModel::writeAnswering(const QByteArray &reply, const QString &path)
{
    TinyModel model;
    model.reply({model.addToken(reply)});
    model.write(path);
}

void ScriptedModel::writeBabbling(const QString &path, int headSize)
{
    TinyModel model;
    model.reply({TinyModel::byteToken('a'), TinyModel::byteToken('b')});
    model.follow(TinyModel::byteToken('b'), TinyModel::byteToken('a'));
    model.setHeadSize(headSize);
    model.write(path);
}
