Set geometry = CreateObject("ZLMIM.Geometry")
On Error Resume Next
geometry.SetIndex 0, 1
WScript.Echo Err.Number & " from " & Err.Source & ": " & Err.Description
