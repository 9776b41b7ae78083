// A Windows program that reads the document it is given. Writes to PROGRAM.txt, beside itself as
// PROGRAM.exe, the document's contents or the number of the error.

#include <stdio.h>
#include <wchar.h>
#include <windows.h>

int wmain(int argc, wchar_t* argv[]) {
  wchar_t result[MAX_PATH];
  GetModuleFileNameW(NULL, result, MAX_PATH);
  wcscpy(wcsrchr(result, L'.'), L".tmp");
  FILE* output = _wfopen(result, L"wb");
  HANDLE document = argc == 2 ? CreateFileW(argv[1], GENERIC_READ, FILE_SHARE_READ, NULL,
                                            OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, NULL)
                              : INVALID_HANDLE_VALUE;
  char bytes[256];
  DWORD count = 0;
  if (document != INVALID_HANDLE_VALUE && ReadFile(document, bytes, sizeof(bytes), &count, NULL)) {
    fwrite(bytes, 1, count, output);
  } else {
    fprintf(output, "%d arguments, error %lu", argc, GetLastError());
  }
  fclose(output);
  wchar_t whole[MAX_PATH];
  wcscpy(whole, result);
  wcscpy(wcsrchr(whole, L'.'), L".txt");
  return MoveFileExW(result, whole, MOVEFILE_REPLACE_EXISTING) ? 0 : 1;
}
