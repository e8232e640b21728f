' A host in a script: opens an object without a screen, is refused a text, edits it, saves it, shows it as text.
' Run with: cscript //nologo host.vbs, after regsvr32 KvDesSvr.dll. ASCII, or the code page of the system.
Option Explicit

Dim Server, Window, Member, Saved
Saved = 0

' The stored object. It keeps the node that the server hands it; a real host would write it to its registry.
Class StoredMember
    Private Node

    Public Property Get Name()
        Name = "LETTORE"
    End Property
    Public Property Get Clsid()
        Clsid = "MEMBER"
    End Property
    Public Property Get UserList()
        UserList = ""
    End Property
    Public Property Let Saving(Flag)
    End Property
    Public Property Get Content()
        If IsObject(Node) Then
            Set Content = Node
        Else
            Set Content = Nothing
        End If
    End Property
    Public Sub Replace(NewNode)
        Set Node = NewNode
        Saved = Saved + 1
    End Sub
End Class

' Who is asked in the operator's place. Without it the system shows its message boxes.
Class Console
    Public Sub ShowError(Number, Source, Description)
        WScript.Echo "refused: " & Description
    End Sub
End Class

' A window without a screen. A class with lists in its tree needs the other members of DesignTree too.
Class ScriptedWindow
    Private Leaf

    Public Sub ClearNodes()
        Leaf = ""
    End Sub
    Public Function AddNode(Relative, Relationship, Key, Text, Image, SelectedImage, Kind)
        If InStr(Key, " ") > 0 Then Leaf = Key
        Set AddNode = Nothing
    End Function
    Public Sub AddToolButton(Key, ToolTip, Style, Bitmap, Picture)
    End Sub
    Public Function SetTools(Words)
        SetTools = False
    End Function
    Public Function AddDefault(Section, Keyword, Word)
        AddDefault = False
    End Function
    Public Property Get SyntaxOn()
        SyntaxOn = True
    End Property
    Public Sub MarkModified(Flag)
    End Sub
    Public Sub Dispose()
    End Sub

    Public Function ShowTree(CallBack, Clsid, Target, Flag)
        Dim Text, NewKey, Back
        ShowTree = True
        If Server.LoadData("") Then Exit Function
        Server.SaveData "", "PARMS", Leaf, 0, "PARMS", NewKey, "PIPPO= 1"
        If Server.SaveData("", "PARMS", Leaf, 0, "PARMS", NewKey, "PASSWORD= ""biblio""") Then Exit Function
        If Server.Save("") Then Exit Function
        ShowTree = Server.Terminate("", Back)
    End Function
End Class

Set Server = CreateObject("vdbSvr.vdSvr")
Set Server.CallBack = New Console
Set Window = New ScriptedWindow
Set Server.DesignTree = Window   ' without this line ShowData opens the component's own window
Set Member = New StoredMember

Dim Target, Cancel, Text
Cancel = False
If Server.ShowData(Nothing, Member, "MEMBER", Target, False, Cancel) Then
    WScript.Echo "not opened"
    WScript.Quit 1
End If
Text = ""
If Not Server.Export(Member, "MEMBER", Text) Then WScript.Echo Text
Server.ShutDown
WScript.Echo "saved " & Saved
