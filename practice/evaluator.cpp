// SPDX-License-Identifier: Apache-2.0
//
// Runs a model for evaluate.py through llama.cpp with the application's own settings: the model's chat
// template, then top-k 40, temperature 0.2 and a seeded distribution. One request a line on the input, one
// answer a line:
//
//     {"tokenize": "text"}                                       ->  [1, 2, 3]
//     {"messages": [{"role": "user", "content": "text"}, ...]}   ->  {"reply": "text", "seconds": 0.01}
//
// The prompt's beginning that the context already holds is not computed again.

#include <llama.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <exception>
#include <iostream>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using nlohmann::json;

constexpr std::uint32_t ContextTokens = 4096;
constexpr int MostReplyTokens = 200;
constexpr std::int32_t TopK = 40;
constexpr float Temperature = 0.2F;

template <auto Free>
struct Freed
{
    template <typename T>
    void operator()(T *handle) const
    {
        Free(handle);
    }
};

class Evaluator
{
public:
    Evaluator(const char *file, int threads, std::uint32_t seed)
        : m_model(loaded(file)), m_context(opened(m_model.get(), threads)),
          m_vocabulary(llama_model_get_vocab(m_model.get())),
          m_sampler(llama_sampler_chain_init(llama_sampler_chain_default_params()))
    {
        llama_sampler_chain_add(m_sampler.get(), llama_sampler_init_top_k(TopK));
        llama_sampler_chain_add(m_sampler.get(), llama_sampler_init_temp(Temperature));
        llama_sampler_chain_add(m_sampler.get(), llama_sampler_init_dist(seed));
    }

    json answer(const json &request)
    {
        if (request.contains("tokenize"))
            return tokenized(request["tokenize"].get<std::string>());
        const auto start = std::chrono::steady_clock::now();
        const std::string reply = generated(prompt(request.at("messages")));
        const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;
        return {{"reply", reply}, {"seconds", taken.count()}};
    }

private:
    using Model = std::unique_ptr<llama_model, Freed<llama_model_free>>;
    using Context = std::unique_ptr<llama_context, Freed<llama_free>>;
    using Sampler = std::unique_ptr<llama_sampler, Freed<llama_sampler_free>>;

    static Model loaded(const char *file)
    {
        llama_model_params parameters = llama_model_default_params();
        parameters.n_gpu_layers = 0;
        Model model(llama_model_load_from_file(file, parameters));
        if (!model)
            throw std::runtime_error(std::string("cannot load ") + file);
        return model;
    }

    static Context opened(llama_model *model, int threads)
    {
        llama_context_params parameters = llama_context_default_params();
        parameters.n_ctx = ContextTokens;
        parameters.n_batch = ContextTokens;
        parameters.n_threads = threads;
        parameters.n_threads_batch = threads;
        Context context(llama_init_from_model(model, parameters));
        if (!context)
            throw std::runtime_error("cannot make a context");
        return context;
    }

    std::vector<llama_token> tokenized(const std::string &text) const
    {
        std::vector<llama_token> tokens(text.size() + 8);
        const int count = llama_tokenize(m_vocabulary, text.data(), std::int32_t(text.size()), tokens.data(),
                                         std::int32_t(tokens.size()), true, true);
        if (count < 0)
            throw std::runtime_error("cannot tokenize");
        tokens.resize(std::size_t(count));
        return tokens;
    }

    std::vector<llama_token> prompt(const json &messages) const
    {
        std::vector<std::string> texts;
        for (const json &message : messages) {
            texts.push_back(message.at("role").get<std::string>());
            texts.push_back(message.at("content").get<std::string>());
        }
        std::vector<llama_chat_message> chat;
        for (std::size_t i = 0; i < texts.size(); i += 2)
            chat.push_back({texts[i].c_str(), texts[i + 1].c_str()});
        const char *form = llama_model_chat_template(m_model.get(), nullptr);
        std::string text(1 << 16, '\0');
        const int length = llama_chat_apply_template(form, chat.data(), chat.size(), true, text.data(),
                                                     std::int32_t(text.size()));
        if (length < 0 || std::size_t(length) > text.size())
            throw std::runtime_error("cannot apply the chat template");
        text.resize(std::size_t(length));
        return tokenized(text);
    }

    void decode(llama_token *tokens, std::size_t count)
    {
        if (llama_decode(m_context.get(), llama_batch_get_one(tokens, std::int32_t(count))) != 0)
            throw std::runtime_error("cannot decode");
    }

    std::string generated(std::vector<llama_token> tokens)
    {
        const auto differ = std::mismatch(m_held.begin(), m_held.end(), tokens.begin(), tokens.end());
        const std::size_t known = std::min(std::size_t(differ.first - m_held.begin()), tokens.size() - 1);
        llama_memory_seq_rm(llama_get_memory(m_context.get()), 0, llama_pos(known), -1);
        decode(tokens.data() + known, tokens.size() - known);
        m_held = std::move(tokens);
        std::string reply;
        for (int i = 0; i < MostReplyTokens; ++i) {
            llama_token token = llama_sampler_sample(m_sampler.get(), m_context.get(), -1);
            if (llama_vocab_is_eog(m_vocabulary, token))
                break;
            char piece[4096];
            const int length = llama_token_to_piece(m_vocabulary, token, piece, sizeof piece, 0, false);
            reply.append(piece, std::size_t(std::max(length, 0)));
            decode(&token, 1);
            m_held.push_back(token);
        }
        return reply;
    }

    Model m_model;
    Context m_context;
    const llama_vocab *m_vocabulary;
    Sampler m_sampler;
    std::vector<llama_token> m_held; // the tokens whose state the context holds
};

void quietly(ggml_log_level level, const char *text, void *)
{
    if (level == GGML_LOG_LEVEL_ERROR)
        std::fputs(text, stderr);
}

int run(int argc, char **argv)
{
    if (argc < 2) {
        std::cerr << "usage: practice-evaluator MODEL.gguf [THREADS] [SEED]\n";
        return 2;
    }
    llama_log_set(quietly, nullptr);
    ggml_backend_load_all();
    Evaluator evaluator(argv[1], argc > 2 ? std::stoi(argv[2]) : 1,
                        argc > 3 ? std::uint32_t(std::stoul(argv[3])) : LLAMA_DEFAULT_SEED);
    for (std::string line; std::getline(std::cin, line);) {
        const json answer = evaluator.answer(json::parse(line));
        std::cout << answer.dump(-1, ' ', false, json::error_handler_t::replace) << std::endl;
    }
    return 0;
}

} // namespace

int main(int argc, char **argv)
{
    try {
        return run(argc, argv);
    } catch (const std::exception &error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
}
