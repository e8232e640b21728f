// The headless host: a tree window without a screen, driven by JSON-RPC 2.0 over a pair of streams.
#pragma once

#include <filesystem>
#include <iosfwd>

namespace kv::host {

/// Where the session finds what it works on.
struct RpcOptions {
    std::filesystem::path Store;       // the registry; made when it does not exist
    std::filesystem::path ProgramDir;  // the program's folder
    std::filesystem::path Temp;        // the user's temporary folder
};

/// Serves requests from `In`, one JSON text a line, until its end; answers, requests and notices of the host
/// go to `Out`, one JSON text a line, flushed line by line; nothing else is written there. `Log` takes
/// sentences for people. An object that is still open at the end is closed without being saved.
///
/// What is not plain in the protocol:
/// - Parameters are given by name; names that a method does not know are passed over, null counts as absent.
///   Whether a method exists is asked first, then whether it fits the moment, then its parameters.
/// - A failure is what was shown to the operator during the request, the first where several were, whatever
///   the operation answered. Trouble with the registry's file is number 20000 with its sentence.
/// - `window/modified` is sent before the answer of a request at whose end the mark is another one.
/// - An `open` in a batch opens at once, and the rest of the batch is worked inside the window, which stays
///   when the batch is through; the answers of the batch come as one array all the same.
/// - What is no request is answered with -32600 even without an id.
/// - `TlbrButtonClick` without a `CurrItem` passes the node that is selected in the window.
///
/// Answers the exit code of the program: 0, or 3 when the registry can't be opened or `Out` takes no more.
int RunRpc(const RpcOptions& Options, std::istream& In, std::ostream& Out, std::ostream& Log);

}  // namespace kv::host
