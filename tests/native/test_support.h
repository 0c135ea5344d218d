// Helpers shared by the native tests: temporary directory trees and capture
// of what a piece of code writes to standard output or standard error.
#pragma once

#include <fcntl.h>
#include <ftw.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>

namespace testsupport {

// A fresh directory under $TMPDIR (or /tmp), removed with its contents.
class TempDir {
public:
    TempDir()
    {
        const char* base = std::getenv("TMPDIR");
        std::string pattern = std::string(base && *base ? base : "/tmp") + "/orvane-native-XXXXXX";
        if (!mkdtemp(pattern.data()))
            std::abort();
        path_ = pattern;
    }
    ~TempDir()
    {
        nftw(
            path_.c_str(), [](const char* p, const struct stat*, int, FTW*) { return ::remove(p); }, 16,
            FTW_DEPTH | FTW_PHYS);
    }
    TempDir(const TempDir&) = delete;
    TempDir& operator=(const TempDir&) = delete;

    const std::string& path() const { return path_; }
    std::string sub(const std::string& relative) const { return path_ + "/" + relative; }

    // Creates the directory `relative` (and its parents) inside this one.
    std::string mkdirs(const std::string& relative) const
    {
        std::string full = path_;
        std::stringstream parts(relative);
        std::string part;
        while (std::getline(parts, part, '/')) {
            full += "/" + part;
            ::mkdir(full.c_str(), 0755);
        }
        return full;
    }
    // Creates a regular file `relative` holding `content`.
    std::string touch(const std::string& relative, const std::string& content = std::string()) const
    {
        std::string full = sub(relative);
        std::ofstream(full) << content;
        return full;
    }

private:
    std::string path_;
};

inline std::string read_file(const std::string& path)
{
    std::ifstream in(path, std::ios::binary);
    std::stringstream text;
    text << in.rdbuf();
    return text.str();
}

// Redirects one of the standard streams (by descriptor) to a file until
// release(), which returns everything written meanwhile.
class StreamCapture {
public:
    explicit StreamCapture(FILE* stream) : stream_(stream), fd_(fileno(stream))
    {
        std::fflush(stream_);
        saved_ = dup(fd_);
        int target = open(file_.sub("captured").c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
        dup2(target, fd_);
        close(target);
    }
    ~StreamCapture() { restore(); }

    std::string release()
    {
        restore();
        return read_file(file_.sub("captured"));
    }

private:
    void restore()
    {
        if (saved_ < 0)
            return;
        std::fflush(stream_);
        dup2(saved_, fd_);
        close(saved_);
        saved_ = -1;
    }

    TempDir file_;
    FILE* stream_;
    int fd_;
    int saved_ = -1;
};

}  // namespace testsupport
