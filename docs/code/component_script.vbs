Set mesh = CreateObject("ZLMIM.Mesh")
If mesh.Load("wagon\body.im") Then
    Set geometry = mesh.Chunks(1).Geometry
    For i = 0 To 2
        WScript.Echo "vertex " & geometry.GetIndex(i)
    Next
End If
