Set bone = CreateObject("ZLMIM.Bone")
Set other = CreateObject("ZLMIM.Bone")
position = bone.Position
other.Position = position
WScript.Echo VarType(position)
