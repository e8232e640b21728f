' The whole life of the component by a script: created by its program identifier, all objects of the host those of a
' script. Every line is a check; the last line of the output is DONE and the number that failed.
Option Explicit

Dim Failures: Failures = 0

Sub Expect(What, Got, Wanted)
    If CStr(Got) <> CStr(Wanted) Then
        Failures = Failures + 1
        WScript.Echo "FAILED " & What & ": got [" & Got & "], wanted [" & Wanted & "]"
    End If
End Sub

' A stored object: it keeps the node that it is handed.
Class StoredObject
    Public Name
    Public Clsid
    Public UserList
    Public Saves
    Private Kept
    Private Flag

    Public Property Let Saving(Value)
        Flag = Value
    End Property
    Public Property Get Content()
        If IsObject(Kept) Then Set Content = Kept Else Set Content = Nothing
    End Property
    Public Sub Replace(Node)
        If Not Flag And Name <> "COPIA" Then Exit Sub
        Set Kept = Node
        Saves = Saves + 1
    End Sub
End Class

Class Clip
    Public DataObj
    Public ClassWord
End Class

' Who is asked in the operator's place; what it lacks is the system's.
Class Operator
    Public Errors
    Public Beeps
    Private Sub Class_Initialize()
        Errors = ""
        Beeps = 0
    End Sub
    Public Sub ShowError(Number, Source, Description)
        Errors = Errors & Number & " " & Source & ": " & Description & vbLf
    End Sub
    Public Sub Beep()
        Beeps = Beeps + 1
    End Sub
    Public Sub SetPointer(Pointer)
    End Sub
End Class

' A tree window without a screen: the nodes by key, the children of each as their keys between bars.
Class Tree
    Public Server
    Public Buttons
    Public Modified
    Public Selected
    Public ClassWord
    Public HasCallBack
    Private Texts
    Private Kinds
    Private Parents
    Private Below
    Private Strict

    Private Sub Class_Initialize()
        Set Texts = CreateObject("Scripting.Dictionary")
        Set Kinds = CreateObject("Scripting.Dictionary")
        Set Parents = CreateObject("Scripting.Dictionary")
        Set Below = CreateObject("Scripting.Dictionary")
        Strict = True
    End Sub

    Public Sub MarkModified(Flag)
        Modified = Flag
    End Sub
    Public Function AddNode(Relative, Relationship, Key, Text, Image, SelectedImage, Kind)
        Dim Parent
        Parent = ""
        If VarType(Relative) = vbString Then
            Parent = Relative
            If Relationship <> 4 Then Parent = Parents(Relative)
            If Relationship = 4 Then
                Below(Parent) = Below(Parent) & Key & "|"
            ElseIf Relationship = 3 Then
                Below(Parent) = Replace(Below(Parent), "|" & Relative & "|", "|" & Key & "|" & Relative & "|")
            Else
                Below(Parent) = Replace(Below(Parent), "|" & Relative & "|", "|" & Relative & "|" & Key & "|")
            End If
        End If
        Texts(Key) = Text
        Kinds(Key) = Kind
        Parents(Key) = Parent
        Below(Key) = "|"
        Set AddNode = Nothing
    End Function
    Public Function AddIconNode(Relative, Relationship, Key, Text, Image, SelectedImage, Kind)
        Set AddIconNode = AddNode(Relative, Relationship, Key, Text, Image, SelectedImage, Kind)
    End Function
    Public Function AddDefault(Section, Keyword, Word)
        AddDefault = False
    End Function
    Public Sub AddToolButton(Key, ToolTip, Style, Bitmap, Picture)
        Buttons = Buttons & Key & Bitmap & " "
    End Sub
    Public Function SetTools(Words)
        Dim Word
        For Each Word In Words
            Buttons = Buttons & Word & " "
        Next
        SetTools = False
    End Function
    Public Function ShowTree(CallBack, Clsid, Target, Flag)
        ClassWord = Clsid
        HasCallBack = Not (CallBack Is Nothing)
        ShowTree = Script()
        Set Target = Edited
    End Function
    Public Sub Dispose()
        Selected = "disposed"
    End Sub
    Public Function MoveListItem(List, Direction, RelativeKey, NewIndex)
        Dim Siblings, Place, Other
        MoveListItem = True
        Place = NodeId(Selected)
        Other = Place + 1
        If Direction > 0 Then Other = Place - 1
        RelativeKey = NodeAt(Parents(Selected), Other)
        If RelativeKey = "" Or List.Count < Other Then Exit Function
        List.Move Place, Other
        NewIndex = Other
        RemoveNode Selected
        MoveListItem = False
    End Function
    Public Property Get SyntaxOn()
        SyntaxOn = Strict
    End Property
    Public Property Let SyntaxOn(Flag)
        Strict = Flag
    End Property
    Public Function NodeId(Key)
        NodeId = UBound(Split(Left(Below(Parents(Key)), InStr(Below(Parents(Key)), "|" & Key & "|")), "|"))
    End Function
    Public Sub ClearNodes()
        Texts.RemoveAll
        Kinds.RemoveAll
        Parents.RemoveAll
        Below.RemoveAll
    End Sub
    Public Sub RemoveNode(Key)
        RemoveChildren Key
        Dim Parent
        Parent = Parents(Key)
        If Parent <> "" Then Below(Parent) = Replace(Below(Parent), "|" & Key & "|", "|")
        Texts.Remove Key
        Kinds.Remove Key
        Parents.Remove Key
        Below.Remove Key
    End Sub
    Public Sub RemoveChildren(Key)
        Dim Child
        For Each Child In Split(Below(Key), "|")
            If Child <> "" Then RemoveNode Child
        Next
    End Sub
    Public Function HasNode(Key)
        HasNode = Texts.Exists(Key)
    End Function
    Public Property Get NodeText(Key)
        NodeText = Texts(Key)
    End Property
    Public Property Let NodeText(Key, Text)
        Texts(Key) = Text
    End Property
    Public Function NodeParent(Key)
        NodeParent = Parents(Key)
    End Function
    Public Function NodeAt(Folder, Place)
        Dim Children
        Children = Split(Below(Folder), "|")
        NodeAt = ""
        If Place >= 1 And Place < UBound(Children) Then NodeAt = Children(Place)
    End Function
    Public Sub SelectNode(Key)
        Selected = Key
    End Sub
    ' The first leaf of a section.
    Public Function Leaf(Section)
        Dim Key
        Leaf = ""
        For Each Key In Texts.Keys
            If Leaf = "" And InStr(Key, Section) = 1 And InStr(Key, " ") > 0 Then Leaf = Key
        Next
    End Function
    Public Function ChildCount(Key)
        ChildCount = UBound(Split(Below(Key), "|")) - 1
    End Function
End Class

Dim Server, Edited, Window, Asked, Work, Target, Cancel, Buffer, Failed

' What the operator does in the window.
Function Script()
    Script = True
    If Work = "EditMember" Then Script = EditMember()
    If Work = "EditList" Then Script = EditList()
End Function

Function EditMember()
    Dim Key, Text, NewKey, Name, Desc, Version, Clsid, Id, Users, Back
    Expect "LoadData", Server.LoadData(""), False
    Expect "root", Window.NodeText("ROOT"), "PROVA"
    Key = Window.Leaf("PARMS")
    Text = ""
    Expect "DispData", Server.DispData("", "PARMS", Key, 0, "PARMS", Text), False
    Expect "text", Left(Text, 13), "PASSWORD= """"" & vbCr
    Text = "PIPPO= 1" & vbCrLf
    Expect "refused", Server.SaveData("", "PARMS", Key, 0, "PARMS", NewKey, Text), True
    Expect "told once", Asked.Errors, "20000 diMember.SaveParm: Parametro non riconosciuto: PIPPO=1" & vbLf
    Expect "accepted", Server.SaveData("", "PARMS", Key, 0, "PARMS", NewKey, "PASSWORD= ""CITT" & Chr(192) & """"), False
    Expect "not saved yet", Edited.Saves, 0
    Expect "Save", Server.Save(""), False
    Expect "saved", Edited.Saves, 1
    Expect "value", Edited.Content.Value("Text"), "CITT" & Chr(192)
    Expect "GetObjectInfo", Server.GetObjectInfo("", Name, Desc, Version, Clsid, Id, Users), False
    Expect "info", Name & "/" & Version & "/" & Clsid & "/" & Id & "/" & Users, "PROVA/0/MEMBER/0/ADMIN"
    Cancel = True
    Expect "Quit", Server.Quit(Cancel), False
    Expect "never cancelled", Cancel, False
    Expect "HelpShow", Server.HelpShow("", "", "", ""), False
    Expect "ShowPropTable", Server.ShowPropTable("", "", ""), False
    Expect "beep", Asked.Beeps, 1
    Server.TlbrButtonClick "CONSTANTS", "", "", ""
    Expect "Terminate", Server.Terminate("", Back), False
    Expect "given back", Back Is Edited, True
    EditMember = False
End Function

Function EditList()
    Dim First, Second, Holder, NewKey, Folder, Item, Index, Section
    Expect "LoadData", Server.LoadData(""), False
    Expect "EditData", Server.EditData("", "FIELDS", "FIELDS", 0, "FIELDS", First), False
    Expect "EditData", Server.EditData("", "FIELDS", "FIELDS", 0, "FIELDS", Second), False
    Expect "modified", Window.Modified, True
    Expect "two", Window.ChildCount("FIELDS"), 2
    Window.SelectNode Second
    Folder = Second: Item = Second: Index = 2: Section = "FIELDS"
    Expect "MoveData", Server.MoveData("", Folder, Item, Index, Section, 1), False
    Expect "new key", Item <> Second And Window.HasNode(Item), True
    Expect "first", Window.NodeId(Item), 1
    Window.SyntaxOn = False
    Set Holder = New Clip
    Holder.ClassWord = "STRINGTABLE"
    Set Holder.DataObj = New StoredObject
    Holder.DataObj.Name = "COPIA"
    Failed = True
    Server.CopyData "", Folder, Item, 1, "FIELDS", False, Failed, Holder
    Expect "CopyData", Failed, False
    Expect "copied", Holder.DataObj.Saves, 1
    Server.PasteData "STRINGTABLE", Folder, Item, 1, "FIELDS", NewKey, Failed, Holder
    Expect "PasteData", Failed, False
    Asked.Errors = ""
    Server.PasteData "TABLE", Folder, Item, 1, "FIELDS", NewKey, Failed, Holder
    Expect "foreign class", Failed, True
    Expect "told", Asked.Errors, _
           "20000 vdSvr.PasteData: I dati memorizzati sono di una classe diversa da TABLE" & vbLf
    Window.SelectNode Item
    Expect "DeleteData", Server.DeleteData("", Item, Item, 1, "FIELDS", False), False
    Expect "one", Window.ChildCount("FIELDS"), 1
    Expect "DeleteData", Server.DeleteData("", "FIELDS", "FIELDS", 0, "FIELDS", True), False
    Expect "none", Window.ChildCount("FIELDS"), 0
    EditList = False
End Function

Function NewStored(ClassWord)
    Set NewStored = New StoredObject
    NewStored.Name = "PROVA"
    NewStored.Clsid = ClassWord
    NewStored.UserList = "ADMIN"
    NewStored.Saves = 0
End Function

Set Server = CreateObject("vdbSvr.vdSvr")
Expect "TypeName", TypeName(Server), "_vdSvr"
Expect "CurrVersion", Server.CurrVersion, 256
Set Asked = New Operator
Set Server.CallBack = Asked
Set Window = New Tree
Set Server.DesignTree = Window

Set Edited = NewStored("MEMBER")
Work = "EditMember"
Cancel = False
Expect "ShowData", Server.ShowData(Asked, Edited, "MEMBER", Target, True, Cancel), False
Expect "class word", Window.ClassWord, "MEMBER"
Expect "call-back", Window.HasCallBack, True
Expect "target", Target Is Edited, True
Expect "buttons", Window.Buttons, "COPY CUT PASTE 0 FINDTAG1000 RENUMTAG1001 MAPTABLE1002 CONSTANTS1003 " & _
                                  "FINDTAG RENUMTAG MAPTABLE CONSTANTS "
Buffer = "prima" & vbCrLf
Expect "Export", Server.Export(Edited, "MEMBER", Buffer), False
Expect "exported", InStr(Buffer, "prima" & vbCrLf & vbTab & "BEGIN PARMS"), 1

Set Edited = NewStored("STRINGTABLE")
Work = "EditList"
Expect "ShowData", Server.ShowData(Nothing, Edited, "STRINGTABLE", Target, False, Cancel), False
Expect "no call-back", Window.HasCallBack, False

Dim Number, Source, Description, HelpFile, HelpContext, System
Set Edited = NewStored("PIPPO")
Expect "unknown", Server.ShowData(Nothing, Edited, "PIPPO", Target, False, Cancel), True
Server.LastError Number, Source, Description, HelpFile, HelpContext, System
Expect "LastError", Number & " " & Source & " " & Description, "20000 vdSvr.ShowData Metodo sconosciuto [PIPPO]"

' The nodes and objects that the component brings.
Dim Made
Set Made = Server.NewObject("IMPORTPROC", "IN MEMORIA")
Made.Content.Value("Table") = "SOGGETTI"
Buffer = ""
Expect "Export", Server.Export(Made, "IMPORTPROC", Buffer), False
Expect "value", InStr(Buffer, "SOGGETTI") > 0, True
Expect "Import", Server.Import(Made, "IMPORTPROC", Buffer), False

' What goes wrong is an error of the script, and the next call works.
On Error Resume Next
Server.Export Nothing, "MEMBER", Buffer
Expect "no object", Err.Number <> 0, True
Err.Clear
Server.DispData "zu", "wenig"
Expect "too few", Err.Number <> 0, True
Err.Clear
Server.Export 7, "MEMBER", Buffer
Expect "wrong type", Err.Number <> 0, True
Err.Clear
On Error GoTo 0
Expect "CurrVersion", Server.CurrVersion, 256

Server.ShutDown
Expect "disposed", Window.Selected, "disposed"
Set Window.Server = Nothing
Set Server = Nothing
WScript.Echo "DONE " & Failures
WScript.Quit Failures
