// Sessions of the headless host as tables: what a client sends, and what comes back before it sends again.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "host/RpcHost.h"

namespace kv::test {

/// One exchange. `Expect` is the lines that come back, each of them
///   JSON              compared as JSON
///   ~JSON             every member told is there, to any depth; an array is compared whole
///   *                 a result, whatever it is
///   ...               alone: whatever comes back
///   ^"TEXT"           a result whose section text begins with the text, a JSON string
/// and nothing where nothing is to come back; what begins with a blank goes on with the line before it.
/// In both texts these words stand for what the session has told so far, as JSON strings:
///   @leaf(SECTION)    key of the first leaf of a section in the last tree
///   @leaf(SECTION,n)  key of the n-th one
///   @node(n)          key of the n-th node of the last tree, in display order
///   @key              the last NewItemKey or CurrItem that came back
///   @buffer           the last section text that came back
struct Exchange {
    std::string Send;
    std::string Expect;
    std::function<void()> Before = {};  // what happens in the world before the line is sent
};

/// A request with id 1, and the answers to it.
std::string Call(std::string_view Method, std::string_view Params = "{}");
std::string Result(std::string_view Json);
std::string Error(int Code, std::string_view Message);
std::string Error(int Code, std::string_view Message, std::string_view Source, int Line = 0);
/// The answer under another id.
std::string WithId(std::string_view Id, std::string Answer);
/// A JSON string.
std::string Quoted(std::string_view Utf8);

/// Sessions over one store in a fresh folder.
class RpcScript : public ::testing::Test {
  protected:
    RpcScript();
    ~RpcScript() override;

    /// Plays a session and checks it, to the end of input, at which `AtEnd` comes back. Answers the exit
    /// code.
    int Play(const std::vector<Exchange>& Exchanges, const std::string& AtEnd = "");
    /// Plays these bytes and answers what came out.
    std::string Raw(const std::string& Input);
    /// The nodes of an object, opened in a session of its own; keys but not places differ from run to run.
    struct Node {
        std::string Key;
        std::string Kind;
    };
    std::vector<Node> Nodes(std::string_view Clsid, std::string_view Name);

    std::filesystem::path Folder;
    host::RpcOptions Options;
    std::string Log;  // of the last session
};

}  // namespace kv::test
