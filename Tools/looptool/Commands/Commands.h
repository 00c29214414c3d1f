#pragma once

namespace NSLoopTool {

class CCommandLine;

// Each adds its command and the options.
void AddInfoCommand(CCommandLine& line);
void AddSlicesCommand(CCommandLine& line);
void AddListCommand(CCommandLine& line);
void AddCheckCommand(CCommandLine& line);
void AddRenderCommand(CCommandLine& line);
void AddPreviewCommand(CCommandLine& line);
void AddDecodeCommand(CCommandLine& line);
void AddPlotCommand(CCommandLine& line);
void AddPlayCommand(CCommandLine& line);
void AddExportCommand(CCommandLine& line);
void AddMakeCommand(CCommandLine& line);

} // namespace NSLoopTool
