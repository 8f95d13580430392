var chunk = new ActiveXObject("ZLMIM.Chunk");
chunk.Material = null;
WScript.Echo(chunk.Material === null ? "no material" : "a material");
