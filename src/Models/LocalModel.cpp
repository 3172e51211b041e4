// SPDX-License-Identifier: Apache-2.0
#include "Models/LocalModel.h"

#include <QHashFunctions>

#include <nlohmann/json.hpp>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

QUrl parsedUrl(const QString &text)
{
    const QUrl url(text, QUrl::StrictMode);
    if (!url.isValid())
        qFatal("The catalog holds an address that is no URL: %s", qUtf8Printable(text));
    return url;
}

LocalModel entry(const QString &id, const QString &name, const QString &detail, const QString &folder,
                 const QString &fileName, qint64 sizeMB)
{
    const QUrl url = parsedUrl(u"https://huggingface.co/"_s + folder + u"/resolve/main/"_s + fileName);
    return {id, name, detail, url, fileName, sizeMB};
}

QString decodedText(const nlohmann::ordered_json &json, const char *key)
{
    return QString::fromStdString(json.at(key).get<std::string>());
}

} // namespace

const QList<LocalModel> &LocalModel::catalog()
{
    static const QList<LocalModel> entries = {
        entry(u"qwen2.5-1.5b"_s, u"Qwen2.5 1.5B Instruct"_s, u"Fast and light · ~1 GB"_s,
              u"Qwen/Qwen2.5-1.5B-Instruct-GGUF"_s, u"qwen2.5-1.5b-instruct-q4_k_m.gguf"_s, 986),
        entry(u"llama3.2-3b"_s, u"Llama 3.2 3B Instruct"_s, u"Smarter planning · ~2 GB"_s,
              u"bartowski/Llama-3.2-3B-Instruct-GGUF"_s, u"Llama-3.2-3B-Instruct-Q4_K_M.gguf"_s, 2019),
    };
    return entries;
}

const LocalModel &LocalModel::withIdentifier(const QString &identifier)
{
    const QList<LocalModel> &entries = catalog();
    const auto found = std::find_if(entries.begin(), entries.end(),
                                    [&](const LocalModel &model) { return model.id == identifier; });
    return found == entries.end() ? entries.first() : *found;
}

size_t qHash(const LocalModel &model, size_t seed) noexcept
{
    return qHashMulti(seed, model.id, model.name, model.detail, model.url, model.fileName, model.sizeMB);
}

void to_json(nlohmann::ordered_json &json, const LocalModel &model)
{
    json = {
        {"id", model.id.toStdString()},
        {"name", model.name.toStdString()},
        {"detail", model.detail.toStdString()},
        {"url", model.url.toString(QUrl::FullyEncoded).toStdString()},
        {"fileName", model.fileName.toStdString()},
        {"sizeMB", model.sizeMB},
    };
}

void from_json(const nlohmann::ordered_json &json, LocalModel &model)
{
    LocalModel decoded;
    decoded.id = decodedText(json, "id");
    decoded.name = decodedText(json, "name");
    decoded.detail = decodedText(json, "detail");
    decoded.url = QUrl(decodedText(json, "url"), QUrl::StrictMode);
    decoded.fileName = decodedText(json, "fileName");
    decoded.sizeMB = json.at("sizeMB").get<qint64>();
    model = decoded;
}
