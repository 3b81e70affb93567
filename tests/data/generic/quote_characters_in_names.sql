SELECT T."""", T."a.""b", "x""".y FROM T, "x"""
