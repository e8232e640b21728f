// A host whose objects are plain ones of a script, without classes: opens an object, is refused a text, edits, saves.
var saved = 0, leaf = "", errors = "";
var server = new ActiveXObject("vdbSvr.vdSvr");

var member = {
    Name: "LETTORE", Clsid: "MEMBER", UserList: "", Saving: false, Content: null,
    Replace: function (node) { member.Content = node; ++saved; }
};

server.CallBack = {
    ShowError: function (number, source, description) { errors += number + " " + source + ": " + description; }
};

server.DesignTree = {
    SyntaxOn: true,
    ClearNodes: function () {},
    AddNode: function (relative, relationship, key) {
        if (key.indexOf(" ") > 0) leaf = key;
        return null;
    },
    AddToolButton: function () {},
    SetTools: function () { return false; },
    AddDefault: function () { return false; },
    MarkModified: function () {},
    Dispose: function () {},
    ShowTree: function () {
        if (server.LoadData("")) return true;
        server.SaveData("", "PARMS", leaf, 0, "PARMS", "", "PIPPO= 1");
        if (server.SaveData("", "PARMS", leaf, 0, "PARMS", "", "PASSWORD= \"biblio\"")) return true;
        if (server.Save("")) return true;
        return server.Terminate("", null);
    }
};

var failed = server.ShowData(null, member, "MEMBER", null, false, false);
server.ShutDown();
WScript.Echo("DONE " + failed + " " + saved + " " + member.Content.Value("Text") + " " + errors);
