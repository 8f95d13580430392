' A host in a script: cscript component.vbs FOLDER-OF-SAMPLE-ASSETS. The component must have been registered.
' Ends with a line "N passed, M failed" and that many failures as its status: a script that stops at an error says
' nothing at all.
Option Explicit
Dim passed, failed
passed = 0
failed = 0

Sub Check(what, isRight)
    If isRight Then
        passed = passed + 1
    Else
        failed = failed + 1
        WScript.Echo "failed: " & what
    End If
End Sub

Sub CheckError(what, number)
    Check what & ": error " & Err.Number & " instead of " & number, Err.Number = number
    Err.Clear
End Sub

Dim name, object
For Each name In Array("anim", "Attachment", "Chunk", "Material", "Geometry", "Texture", "BoneAnim", "ZLMModel", _
                       "MeshEntry", "Mesh", "bone")
    Set object = CreateObject("zlmim." & name)
    Check "TypeName of " & name, LCase(TypeName(object)) = "_" & LCase(name)
Next

Dim folder, model
folder = WScript.Arguments(0)
Set model = CreateObject("ZLMIM.ZLMModel")
model.Load folder & "\assets\wagon\config.txt"
Check "entries", model.MeshTable.Count > 1
Check "bogies", model.Bogies.Count > 0 And model.Bogies.Count = model.BogieNames.Count
Check "kuid", Left(model.kuid, 1) = "<"
Dim entry, chunk, texture, entries, vertices, textures
entries = 0
vertices = 0
textures = 0
For Each entry In model.MeshTable
    entries = entries + 1
    Check "entry by number", entry Is model.MeshTable(entries)
    Check "its model", entry.Parent Is model
    Check "its mesh", entry.Mesh.Chunks.Count = entry.Mesh.ChunkCount
    For Each chunk In entry.Mesh.Chunks
        vertices = vertices + chunk.Geometry.MaxVertices
        For Each texture In chunk.Material.Textures
            textures = textures + 1
            Check "texture", texture.Name <> "" And texture.TextureType >= 0
        Next
    Next
Next
Check "entries by enumeration", entries = model.MeshTable.Count
Check "vertices", vertices > 0
Check "textures", textures > 0

Dim bone, child, again
Set bone = CreateObject("ZLMIM.Bone")
Set child = CreateObject("ZLMIM.Bone")
bone.Name = "r" & Chr(228)
Check "text", bone.Name = "r" & Chr(228)
bone.Version = "12"
Check "number from a text", bone.Version = 12
bone.Children.Add child
Set child.Parent = bone
Check "identity", child.Parent Is bone And bone.Children(1) Is child And bone.Children.Item(1) Is child
Set child.Parent = Nothing
Check "none", child.Parent Is Nothing
bone.Children.Remove 1
Check "removed", bone.Children.Count = 0

Dim material, geometry, texture2, record, normals
Set material = CreateObject("ZLMIM.Material")
material.Opacity = 0.5
Check "float", material.Opacity = 0.5
Set texture2 = CreateObject("ZLMIM.Texture")
texture2.TextureType = 8
Check "enumeration", texture2.TextureType = 8
Set geometry = CreateObject("ZLMIM.Geometry")
geometry.MaxIndex = 3
geometry.SetIndex 2, 7
Check "method with a result", geometry.GetIndex(2) = 7 And geometry.GetIndex(3) = -1
record = bone.Position
Check "record", VarType(record) = 36
geometry.FaceNormals.Add record
geometry.MaxVertNormal = 1
geometry.SetVertexNormal 0, record
Check "record by reference", geometry.GetVertexNormal(0, record) = True
For Each normals In geometry.FaceNormals
    Check "record of a list", VarType(normals) = 36
Next

Dim holder, attPar, attName
Set holder = CreateObject("ZLMIM.ZLMModel")
Set entry = CreateObject("ZLMIM.MeshEntry")
attPar = "BODY"
attName = "A.Point"
entry.Load holder, "Name", "", "", attPar, attName
Check "texts changed in place", attPar = "body" And attName = "a.point" And entry.Name = "name"
Check "loaded into a model", holder.MeshTable(1) Is entry
Set entry.Parent = Nothing

On Error Resume Next
geometry.SetIndex 3, 1
CheckError "BoundsError", 9
again = bone.Children(1)
CheckError "no such entry", 9
again = bone.Children("key")
CheckError "a key", 5
bone.Version = "twelve"
CheckError "not a number", 13
bone.Nothing
CheckError "no such member", 438
geometry.SetIndex 1
CheckError "too few arguments", 450
Set child.Parent = geometry
CheckError "an object of another class", 5
bone.Children.Add geometry
CheckError "the same in a list", 5
model.Load "config.txt"
CheckError "no file is no failure", 0
CreateObject("ZLMIM.Mesh").Load folder & "\overflow.im"
CheckError "OverflowError", 6

WScript.Echo passed & " passed, " & failed & " failed"
WScript.Quit failed
