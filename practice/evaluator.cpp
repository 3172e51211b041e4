// SPDX-License-Identifier: Apache-2.0
//
// Plans for evaluate.py with the application's engine (a fresh seed per reply), system prompt and parser.
// Reads one request per line and writes one answer per line:
//
//     {"tokenize": "text"}                                      ->  [1, 2, 3]
//     {"messages": [{"role": "user", "content": "text"}, ...]}  ->
//         {"reply": "text", "action": {"name": "open_app", "args": {"app": "Notes"}}, "seconds": 0.01}
//
// Messages exclude the system prompt. The action is null if the parser finds none in the reply.

#include "Actions/AgentAction.h"
#include "Agent/SystemPrompt.h"
#include "Base/LocalizedError.h"
#include "Inference/Llama/LlamaEngine.h"
#include "Inference/Llama/LlamaLog.h"
#include "Inference/Llama/LlamaPrompt.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QStringList>

#include <llama.h>
#include <nlohmann/json.hpp>

#include <iostream>
#include <stdexcept>
#include <string>

using namespace Qt::StringLiterals;

namespace {

using nlohmann::json;

constexpr int maxTokensPerReply = 200; // as in the agent loop

const QList<ChatMessage> &beginning()
{
    static const QList<ChatMessage> messages = {{ChatMessage::Role::System, SystemPrompt::text()}};
    return messages;
}

QString text(const json &value)
{
    return QString::fromStdString(value.get<std::string>());
}

QList<ChatMessage> conversation(const json &messages)
{
    QList<ChatMessage> all = beginning();
    for (const json &message : messages) {
        const std::optional<ChatMessage::Role> role = ChatMessage::roleFromRawValue(text(message.at("role")));
        if (!role)
            throw std::runtime_error("unknown role");
        all.append({*role, text(message.at("content"))});
    }
    return all;
}

json described(const std::optional<AgentAction> &action)
{
    if (!action)
        return nullptr;
    json arguments = json::object();
    for (const auto &[key, value] : action->args.asKeyValueRange())
        arguments[key.toStdString()] = value.toStdString();
    return {{"name", action->name.toStdString()}, {"args", arguments}};
}

// Loads the vocabulary only; the engine does not expose its tokenizer.
class Vocabulary
{
public:
    explicit Vocabulary(const QString &path)
    {
        llama_model_params parameters = llama_model_default_params();
        parameters.vocab_only = true;
        m_model.reset(llama_model_load_from_file(QFile::encodeName(path).constData(), parameters));
        if (!m_model)
            throw std::runtime_error("cannot read the vocabulary");
    }

    json tokenized(const QString &prompt) const
    {
        return LlamaPrompt::tokenized(llama_model_get_vocab(m_model.get()), prompt);
    }

private:
    LlamaModel m_model;
};

QCoro::Task<json> answer(LlamaEngine &engine, const Vocabulary &vocabulary, json request)
{
    if (request.contains("tokenize"))
        co_return vocabulary.tokenized(text(request["tokenize"]));
    const QList<ChatMessage> messages = conversation(request.at("messages"));
    const std::function<void(QString)> onToken = [](const QString &) {};
    QElapsedTimer timer;
    timer.start();
    const QString reply = co_await engine.generate(messages, maxTokensPerReply, onToken);
    const double seconds = double(timer.nsecsElapsed()) / 1e9;
    json result = {{"reply", reply.toStdString()}, {"seconds", seconds}};
    result["action"] = described(AgentAction::parse(reply));
    co_return result;
}

// Ends at the end of input.
QCoro::Task<void> serve(QString path)
{
    LlamaEngine engine(beginning());
    int status = 0;
    try {
        co_await engine.load(path);
        const Vocabulary vocabulary(path);
        for (std::string line; std::getline(std::cin, line);) {
            const json request = json::parse(line);
            const json reply = co_await answer(engine, vocabulary, request);
            std::cout << reply.dump() << std::endl;
        }
    } catch (const LocalizedError &error) {
        std::cerr << error.errorDescription().toStdString() << '\n';
        status = 1;
    } catch (const std::exception &error) {
        std::cerr << error.what() << '\n';
        status = 1;
    }
    LlamaLog::keep(LlamaLog::Kept::Nothing); // evaluation ahead is interrupted
    engine.unload();
    QCoreApplication::exit(status);
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 2) {
        std::cerr << "usage: practice-evaluator MODEL.gguf\n";
        return 2;
    }
    LlamaLog::keep(LlamaLog::Kept::Errors);
    const QCoro::Task<void> serving = serve(arguments[1]);
    return QCoreApplication::exec();
}
