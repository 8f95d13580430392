Set model = CreateObject("ZLMIM.ZLMModel")
Set entry = CreateObject("ZLMIM.MeshEntry")
entry.Load model, "crate", "wagon\body.im", "", "", ""
WScript.Echo model.MeshTable.Count & " entry, made by a script: " & model.MeshTable(1).Name
Set entry.Parent = Nothing
